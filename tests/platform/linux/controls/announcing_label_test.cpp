#include "platform/linux/controls/announcing_label.h"

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

}  // namespace
}  // namespace notewick
