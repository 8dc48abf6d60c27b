#include "platform/macos/panels/window_drag.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/macos/eventually.h"

namespace notewick {
namespace {

class MacosWindowDragTest : public testing::Test {
 protected:
  void startDrag() {
    pressed_ = true;
    [NSNotificationCenter.defaultCenter postNotificationName:NSWindowWillMoveNotification
                                                      object:window_];
  }

  NSWindow* window_ = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                 styleMask:NSWindowStyleMaskTitled
                                                   backing:NSBackingStoreBuffered
                                                     defer:YES];
  bool pressed_ = false;
  std::unique_ptr<WindowDrag> drag_ =
      std::make_unique<WindowDrag>(window_, [this] { return pressed_; });
  std::string log_;
};

TEST_F(MacosWindowDragTest, RunsInOrderWhatHasWaitedForItsEndAndAllElseAtOnce) {
  pressed_ = true;
  drag_->whenOver([this] { log_ += "-"; });
  EXPECT_EQ(log_, "-") << "a press alone is no drag";
  startDrag();
  drag_->whenOver([this] { log_ += "a"; });
  drag_->whenOver([this] { log_ += "b"; });
  runLoopOnce();
  EXPECT_EQ(log_, "-");
  pressed_ = false;
  EXPECT_TRUE(eventually([this] { return log_ == "-ab"; }));
  pressed_ = true;
  drag_->whenOver([this] { log_ += "c"; });
  EXPECT_EQ(log_, "-abc") << "that drag is over";
}

TEST_F(MacosWindowDragTest, DropsWhatWaitsWhenDestroyed) {
  startDrag();
  drag_->whenOver([this] { log_ += "x"; });
  drag_ = std::make_unique<WindowDrag>(window_, [this] { return pressed_; });
  startDrag();
  drag_->whenOver([this] { log_ += "later"; });
  pressed_ = false;
  EXPECT_TRUE(eventually([this] { return log_ == "later"; }));
}

}  // namespace
}  // namespace notewick
