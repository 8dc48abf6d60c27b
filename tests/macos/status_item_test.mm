#include "platform/macos/status_item.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

class RecordingTarget : public StatusItemTarget {
 public:
  void menuItemChosen(const MenuItem& item) override { chosen.push_back(item); }
  void statusItemClicked() override {}

  std::vector<MenuItem> chosen;
};

class MacosStatusItemTest : public testing::Test {
 protected:
  MacosStatusItemTest() { item_.setMenu(menu_); }

  [[nodiscard]] NSMenu* shown() const { return item_.native().menu; }
  [[nodiscard]] NSInteger place(NSString* title) const {
    return [shown() indexOfItemWithTitle:title];
  }

  std::shared_ptr<RecordingTarget> target_ = std::make_shared<RecordingTarget>();
  CocoaStatusItem item_{{"note.text.badge.plus", "VELK Notewick", " VELK"}, target_};
  Menu menu_ = {
      {.title = "Paused"},
      {.title = "Log: Lena O'Keefe", .action = MenuAction::openPending, .representedObject = "P-1"},
      {.separator = true},
      {.title = "Log work now", .action = MenuAction::logNow, .key = "l"},
      {.title = "Quit VELK Notewick", .action = MenuAction::terminate, .key = "q"}};
};

TEST_F(MacosStatusItemTest, ShowsASymbolThatTheSystemHasBesideTheTitle) {
  EXPECT_NE(item_.native().button.image, nil);
  EXPECT_EQ(utf8(item_.native().button.title), " VELK");
  item_.setTitle(" VELK (2)", 2);
  EXPECT_EQ(utf8(item_.native().button.title), " VELK (2)");
}

TEST_F(MacosStatusItemTest, DrawsEveryItemInItsPlaceAndGreysWhatHasNoAction) {
  ASSERT_EQ(static_cast<std::size_t>(shown().numberOfItems), menu_.size());
  [shown() update];
  for (std::size_t index = 0; index < menu_.size(); ++index) {
    NSMenuItem* native = [shown() itemAtIndex:static_cast<NSInteger>(index)];
    EXPECT_EQ(native.isSeparatorItem, menu_[index].separator);
    if (menu_[index].separator) continue;
    EXPECT_EQ(utf8(native.title), menu_[index].title);
    EXPECT_EQ(utf8(native.keyEquivalent), menu_[index].key);
    EXPECT_EQ(static_cast<bool>(native.enabled), menu_[index].enabled()) << menu_[index].title;
  }
}

TEST_F(MacosStatusItemTest, GivesTheChosenItemBackAlsoOfAMenuThatWasReplaced) {
  NSMenu* old = shown();
  item_.setMenu({});
  [old performActionForItemAtIndex:[old indexOfItemWithTitle:nsString(menu_[1].title)]];
  EXPECT_EQ(target_->chosen, (std::vector{menu_[1]}));
}

TEST_F(MacosStatusItemTest, LeavesTerminatingToTheApplication) {
  NSMenuItem* quit = [shown() itemAtIndex:place(@"Quit VELK Notewick")];
  EXPECT_EQ(quit.target, nil);
  EXPECT_EQ(quit.action, @selector(terminate:));
}

TEST_F(MacosStatusItemTest, DropsAChoiceWhenNobodyListens) {
  const std::weak_ptr<RecordingTarget> gone = target_;
  target_.reset();
  [shown() performActionForItemAtIndex:place(@"Log: Lena O'Keefe")];
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
