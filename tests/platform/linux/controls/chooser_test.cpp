#include "platform/linux/controls/chooser.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>

namespace notewick {
namespace {

const QString LONG_NAME = QStringLiteral("Maximiliane Featherstonehaugh-Cholmondeley-Wriothesley");

class ChooserTest : public testing::Test {
 protected:
  ChooserTest() {
    chooser_.addItems({QStringLiteral("Alice"), LONG_NAME});
    chooser_.setFixedWidth(296);
  }
  QString toolTip() {
    QHelpEvent event(QEvent::ToolTip, QPoint(9, 9), QPoint(9, 9));
    QApplication::sendEvent(&chooser_, &event);
    return chooser_.toolTip();
  }

  Chooser chooser_;
};

TEST_F(ChooserTest, CutsALongNameAndShowsItWholeAsToolTip) {
  chooser_.setCurrentIndex(1);
  EXPECT_TRUE(chooser_.shownText().endsWith(QStringLiteral("…")));
  EXPECT_EQ(chooser_.currentText(), LONG_NAME);
  EXPECT_TRUE(toolTip().contains(QStringLiteral("Wriothesley")));
}

TEST_F(ChooserTest, ShowsAShortNameWholeWithoutToolTip) {
  chooser_.setCurrentIndex(1);
  toolTip();
  chooser_.setCurrentIndex(0);
  EXPECT_EQ(chooser_.shownText(), QStringLiteral("Alice"));
  EXPECT_TRUE(toolTip().isEmpty());
}

TEST_F(ChooserTest, IsNotChangedByTheWheel) {
  chooser_.show();
  QWheelEvent down(QPointF(9, 9), QPointF(9, 9), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QApplication::sendEvent(&chooser_, &down);
  EXPECT_EQ(chooser_.currentText(), QStringLiteral("Alice"));
}

}  // namespace
}  // namespace notewick
