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

TEST_F(MacosChooserTest, HasNothingSelectedWithoutItems) {
  EXPECT_EQ(selectedItem(chooser_), std::nullopt);
  setItems(chooser_, {"Alice Jones"});
  selectItem(chooser_, std::nullopt);
  EXPECT_EQ(selectedItem(chooser_), std::nullopt);
}

TEST_F(MacosChooserTest, TellsAnItemWithoutATitleFromNone) {
  setItems(chooser_, {"Alice Jones", ""});
  selectItem(chooser_, 1);
  EXPECT_EQ(selectedItem(chooser_), 1U);
}

TEST_F(MacosChooserTest, ShowsTheItemsInTheirOrder) {
  setItems(chooser_, {"Alice Jones", "Bob Smith"});
  EXPECT_THAT(shown(), ElementsAre("Alice Jones", "Bob Smith"));
  setItems(chooser_, {"Zoe Abel", "Bob Smith", "Alice Jones"});
  EXPECT_THAT(shown(), ElementsAre("Zoe Abel", "Bob Smith", "Alice Jones"));
  setItems(chooser_, {"Alice Jones"});
  EXPECT_THAT(shown(), ElementsAre("Alice Jones"));
  setItems(chooser_, {});
  EXPECT_THAT(shown(), ElementsAre());
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
