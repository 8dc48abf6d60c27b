#include "platform/linux/controls/segmented_control.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QVBoxLayout>

#include "tests/platform/linux/panels/panel_fixture.h"

namespace notewick {
namespace {

TEST(SegmentedControl, AClickChoosesAndLeavesTheKeyboardWhereTheUserTypes) {
  QWidget window;
  QVBoxLayout column(&window);
  QLineEdit field;
  SegmentedControl minutes({"15", "30", "45"}, "Minutes");
  column.addWidget(&field);
  column.addWidget(&minutes);
  activate(window);
  field.setFocus();
  QTest::mouseClick(&control<QAbstractButton>(window, "30"), Qt::LeftButton);
  EXPECT_EQ(minutes.selected(), 1U);
  EXPECT_TRUE(field.hasFocus());
}

}  // namespace
}  // namespace notewick
