#include "platform/linux/controls/labels.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleInterface>

namespace notewick {
namespace {

// That a screen reader hears of it is tested on a desktop: without one, no event is sent.
class AnnouncingLabelTest : public testing::Test {
 protected:
  void SetUp() override {
    label_.setParent(&window_);
    window_.show();
  }

  QWidget window_;
  AnnouncingLabel label_{11, Tint::secondary};
};

TEST_F(AnnouncingLabelTest, IsHiddenWhileEmpty) {
  EXPECT_FALSE(label_.isVisible());
  label_.announce("2 queued — will retry");
  EXPECT_TRUE(label_.isVisible());
  label_.announce("");
  EXPECT_FALSE(label_.isVisible());
}

TEST_F(AnnouncingLabelTest, IsANotificationCalledAfterItsText) {
  label_.announce("Pick a duration");
  const QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&label_);
  EXPECT_EQ(seen->role(), QAccessible::Notification);
  EXPECT_EQ(seen->text(QAccessible::Name), QStringLiteral("Pick a duration"));
}

TEST(LabelTest, FollowsThePaletteOfItsWindow) {
  QWidget window;
  auto* const label = new Label("text", 11, Tint::secondary);
  label->setParent(&window);
  for (const QPalette& palette : {QPalette(Qt::lightGray), QPalette(Qt::darkBlue)}) {
    window.setPalette(palette);
    EXPECT_EQ(label->palette().color(QPalette::WindowText), tinted(palette, Tint::secondary));
  }
}

TEST(LabelTest, ShowsMarkupAsText) {
  const Label label("<b>Lena</b> & Co", 11, Tint::primary);
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
  EXPECT_EQ(label.text(), QStringLiteral("<b>Lena</b> & Co"));
}

TEST(LabelTest, TakesTheHeightThatItsLinesNeed) {
  Label label("", 11, Tint::primary);
  label.wrapAt(340);
  EXPECT_EQ(label.width(), points(340));
  label.display("one line");
  const int oneLine = label.height();
  label.display(std::string(50, 'm') + " " + std::string(30, 'm') + " " + std::string(30, 'm'));
  EXPECT_GE(label.height(), 3 * oneLine - 4);
  label.display("one line");
  EXPECT_EQ(label.height(), oneLine);
}

TEST(LabelTest, EndsNoLineBetweenSchemeAndHost) {
  Label label("", 11, Tint::primary);
  label.wrapAt(340);
  label.display("Set a password at https://velk.example/login.");
  EXPECT_EQ(label.text(), QStringLiteral("Set a password at https://\u2060velk.example/login."));
}

}  // namespace
}  // namespace notewick
