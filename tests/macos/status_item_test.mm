#include "platform/macos/status_item.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"
#include "ui/status_menu.h"

namespace notewick {
namespace {

class RecordingTarget : public StatusItemTarget {
 public:
  void menuItemChosen(const MenuItem& item) override { chosen.push_back(item); }
  void statusItemClicked() override { ++clicks; }

  std::vector<MenuItem> chosen;
  int clicks = 0;
};

MenuState busyState() {
  MenuState state;
  state.signedIn = true;
  state.trusted = true;
  state.participantCount = 2;
  state.pendings = {{.id = "P-1",
                     .participant = "Lena O'Keefe",
                     .day = "2024-05-02",
                     .firstSeen = {},
                     .lastSeen = {},
                     .observedMinutes = 12,
                     .evidence = {}}};
  state.outboxCount = 1;
  return state;
}

class MacosStatusItemTest : public testing::Test {
 protected:
  MacosStatusItemTest() { item_.setMenu(menu_); }

  [[nodiscard]] NSMenu* shown() const { return item_.native().menu; }
  [[nodiscard]] NSInteger place(NSString* title) const {
    return [shown() indexOfItemWithTitle:title];
  }

  std::shared_ptr<RecordingTarget> target_ = std::make_shared<RecordingTarget>();
  CocoaStatusItem item_{{"note.text.badge.plus", "VELK Notewick", " VELK"}, target_};
  Menu menu_ = makeMenu(busyState());
};

TEST_F(MacosStatusItemTest, ShowsTheSymbolBeforeTheTitle) {
  NSStatusBarButton* button = item_.native().button;
  EXPECT_NE(button.image, nil);
  EXPECT_EQ(utf8(button.image.accessibilityDescription), "VELK Notewick");
  EXPECT_EQ(button.imagePosition, NSImageLeading);
  EXPECT_EQ(utf8(button.title), " VELK");
  item_.setTitle(" VELK (2)", 2);
  EXPECT_EQ(utf8(button.title), " VELK (2)");
  EXPECT_EQ(item_.native().length, NSVariableStatusItemLength);
}

TEST_F(MacosStatusItemTest, DrawsEveryItemInItsPlace) {
  ASSERT_EQ(static_cast<std::size_t>(shown().numberOfItems), menu_.size());
  for (std::size_t index = 0; index < menu_.size(); ++index) {
    NSMenuItem* native = [shown() itemAtIndex:static_cast<NSInteger>(index)];
    EXPECT_EQ(native.isSeparatorItem, menu_[index].separator);
    if (menu_[index].separator) continue;
    EXPECT_EQ(utf8(native.title), menu_[index].title);
    EXPECT_EQ(utf8(native.keyEquivalent), menu_[index].key);
  }
}

TEST_F(MacosStatusItemTest, GreysWhatHasNoAction) {
  [shown() update];
  for (std::size_t index = 0; index < menu_.size(); ++index) {
    if (menu_[index].separator) continue;
    NSMenuItem* native = [shown() itemAtIndex:static_cast<NSInteger>(index)];
    EXPECT_EQ(static_cast<bool>(native.enabled), menu_[index].enabled()) << menu_[index].title;
  }
}

TEST_F(MacosStatusItemTest, GivesTheChosenItemBack) {
  const NSInteger index = place(@"Log: Lena O'Keefe (~12 min, 2024-05-02)");
  ASSERT_GE(index, 0);
  [shown() performActionForItemAtIndex:index];
  ASSERT_EQ(target_->chosen.size(), 1U);
  EXPECT_EQ(target_->chosen[0].action, MenuAction::openPending);
  EXPECT_EQ(target_->chosen[0].representedObject, "P-1");
  EXPECT_EQ(target_->chosen[0].title, "Log: Lena O'Keefe (~12 min, 2024-05-02)");
}

TEST_F(MacosStatusItemTest, GivesBackAnItemOfAMenuThatWasReplaced) {
  NSMenu* old = shown();
  item_.setMenu({});
  [old performActionForItemAtIndex:[old indexOfItemWithTitle:@"Retry now"]];
  ASSERT_EQ(target_->chosen.size(), 1U);
  EXPECT_EQ(target_->chosen[0].action, MenuAction::retryOutbox);
}

TEST_F(MacosStatusItemTest, LeavesTerminatingToTheApplication) {
  NSMenuItem* quit = [shown() itemAtIndex:place(@"Quit VELK Notewick")];
  EXPECT_EQ(quit.target, nil);
  EXPECT_EQ(quit.action, @selector(terminate:));
  EXPECT_EQ(utf8(quit.keyEquivalent), "q");
}

TEST_F(MacosStatusItemTest, DropsAChoiceWhenNobodyListens) {
  const std::weak_ptr<RecordingTarget> gone = target_;
  target_.reset();
  [shown() performActionForItemAtIndex:place(@"Retry now")];
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
