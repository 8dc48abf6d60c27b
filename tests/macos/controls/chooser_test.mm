#include "platform/macos/controls/chooser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

using testing::ElementsAre;

class MacosChooserTest : public testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> shown() const {
    std::vector<std::string> titles;
    for (NSInteger i = 0; i < chooser_.numberOfItems; ++i) {
      titles.push_back(utf8([chooser_ itemTitleAtIndex:i]));
    }
    return titles;
  }

  NSPopUpButton* chooser_ = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
};

TEST_F(MacosChooserTest, TellsNoSelectionFromAnItemWithoutATitle) {
  EXPECT_EQ(selectedItem(chooser_), std::nullopt);
  setItems(chooser_, {"Alice Jones", ""});
  selectItem(chooser_, 1);
  EXPECT_EQ(selectedItem(chooser_), 1U);
  selectItem(chooser_, std::nullopt);
  EXPECT_EQ(selectedItem(chooser_), std::nullopt);
}

TEST_F(MacosChooserTest, ShowsTheItemsInTheirOrder) {
  using Titles = std::vector<std::string>;
  for (const Titles& titles :
       {Titles{"Alice Jones", "Bob Smith"}, Titles{"Zoe Abel", "Bob Smith", "Alice Jones"},
        Titles{"Alice Jones"}, Titles{}}) {
    setItems(chooser_, titles);
    EXPECT_EQ(shown(), titles);
  }
}

TEST_F(MacosChooserTest, LeavesItemsThatStayUntouched) {
  setItems(chooser_, {"Alice Jones", "Bob Smith", "Dan Brown"});
  NSMenuItem* alice = [chooser_ itemAtIndex:0];
  NSMenuItem* dan = [chooser_ itemAtIndex:2];
  setItems(chooser_, {"Alice Jones", "Carol White", "Dan Brown"});
  EXPECT_THAT(shown(), ElementsAre("Alice Jones", "Carol White", "Dan Brown"));
  EXPECT_EQ([chooser_ itemAtIndex:0], alice);
  EXPECT_EQ([chooser_ itemAtIndex:2], dan);
}

}  // namespace
}  // namespace notewick
