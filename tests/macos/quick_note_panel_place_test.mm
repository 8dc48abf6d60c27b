#include "tests/macos/quick_note_panel_fixture.h"

namespace notewick {
namespace {

class MacosQuickNotePanelPlaceTest : public MacosQuickNotePanelTest {
 protected:
  ~MacosQuickNotePanelPlaceTest() override {
    for (id<NSObject> observation in observations_) {
      [NSNotificationCenter.defaultCenter removeObserver:observation];
    }
  }

  /// From here on writes down every frame that the panel takes.
  void watchFrames() {
    for (NSNotificationName name in
         @[ NSWindowDidMoveNotification, NSWindowDidResizeNotification ]) {
      [observations_
          addObject:[NSNotificationCenter.defaultCenter addObserverForName:name
                                                                    object:native()
                                                                     queue:nil
                                                                usingBlock:^(NSNotification*) {
                                                                  frames_.push_back(native().frame);
                                                                }]];
    }
  }

  std::vector<NSRect> frames_;
  NSMutableArray<id<NSObject>>* observations_ = [NSMutableArray array];
};

TEST_F(MacosQuickNotePanelPlaceTest, GrowsAndShrinksWithItsRows) {
  const CGFloat plain = NSHeight(native().frame);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  EXPECT_GT(NSHeight(native().frame), plain);
  panel_->setCaught({}, std::nullopt);
  panel_->fitToContents();
  EXPECT_EQ(NSHeight(native().frame), plain);
}

TEST_F(MacosQuickNotePanelPlaceTest, KeepsTheRoomOfTheHiddenPlaceholder) {
  const CGFloat shown = native().contentView.fittingSize.height;
  panel_->setPlaceholderHidden(true);
  EXPECT_TRUE(textField(native(), TEXTS.placeholder).hidden);
  EXPECT_EQ(native().contentView.fittingSize.height, shown);
}

TEST_F(MacosQuickNotePanelPlaceTest, StandsInTheBottomRightCornerAndGrowsUpwardsThere) {
  EXPECT_FALSE(panel_->applySavedFrame());
  panel_->placeAtBottomRight(24);
  EXPECT_EQ(NSMaxX(native().frame), NSMaxX(visible()) - 24);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  EXPECT_EQ(NSMinY(native().frame), NSMinY(visible()) + 24);
  EXPECT_TRUE(panel_->applySavedFrame()) << "that is its place now";
}

TEST_F(MacosQuickNotePanelPlaceTest, TakesANewFrameInOneStepAndNoneWhereItStandsAlready) {
  panel_->placeAtBottomRight(24);
  panel_->orderFrontRegardless();
  watchFrames();
  EXPECT_TRUE(panel_->applySavedFrame());
  panel_->fitToContents();
  EXPECT_TRUE(frames_.empty());
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  ASSERT_FALSE(frames_.empty());
  for (const NSRect& frame : frames_) EXPECT_TRUE(NSEqualRects(frame, native().frame));
}

TEST_F(MacosQuickNotePanelPlaceTest, ComesBackWhereItWasLeftOrOntoTheScreen) {
  const auto comesBackFrom = [this](CGFloat x) {
    [native() setFrameOrigin:NSMakePoint(x, NSMinY(visible()) + 150)];
    [native() saveFrameUsingName:@"VELKQuickWidget"];
    const NSRect left = native().frame;
    remake();
    EXPECT_TRUE(panel_->applySavedFrame());
    return static_cast<bool>(NSEqualRects(native().frame, left));
  };
  EXPECT_TRUE(comesBackFrom(NSMinX(visible()) + 100));
  EXPECT_FALSE(comesBackFrom(NSMaxX(visible()) + 5000));
  EXPECT_TRUE(NSContainsRect(visible(), native().frame));
}

}  // namespace
}  // namespace notewick
