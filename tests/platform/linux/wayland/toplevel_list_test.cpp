#include "platform/linux/wayland/toplevel_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

using testing::ElementsAre;

class ToplevelListTest : public testing::Test {
 protected:
  void show(int window, const std::string& title, const std::string& application) {
    list_.set(id(window), {title, application, false});
  }

  void activate(int window, const std::string& title, const std::string& application) {
    list_.set(id(window), {title, application, true});
  }

  void close(int window) { list_.remove(id(window)); }

  [[nodiscard]] auto frontmost() const { return list_.frontmost(8); }
  [[nodiscard]] auto titles() const { return frontmost()->titles; }

  ToplevelList list_;

 private:
  ToplevelList::Id id(int window) { return &windows_.at(static_cast<std::size_t>(window)); }

  std::array<char, 64> windows_{};
};

TEST_F(ToplevelListTest, TheActiveWindowHasTheFocusWithItsNewestTitle) {
  EXPECT_FALSE(frontmost());
  show(1, "letter", "editor");
  EXPECT_FALSE(frontmost());
  activate(2, "before", "mail");
  activate(2, "inbox", "mail");
  EXPECT_EQ(frontmost()->name, "mail");
  EXPECT_EQ(frontmost()->focusedTitle, "inbox");
  EXPECT_THAT(titles(), ElementsAre("inbox"));
}

TEST_F(ToplevelListTest, WindowsComeInTheOrderOfTheirLastActivation) {
  activate(1, "one", "editor");
  show(1, "one", "editor");
  activate(2, "two", "editor");
  show(2, "two", "editor");
  show(3, "three", "editor");
  activate(1, "one", "editor");
  EXPECT_THAT(titles(), ElementsAre("one", "two", "three"));
}

TEST_F(ToplevelListTest, NeverShowsAWindowOfAnotherApplicationOrOfNone) {
  show(1, "private", "mail");
  show(2, "nameless", "");
  activate(3, "letter", "editor");
  EXPECT_THAT(titles(), ElementsAre("letter"));
  activate(4, "nameless too", "");
  EXPECT_EQ(frontmost()->name, std::nullopt);
  EXPECT_THAT(titles(), ElementsAre("nameless too"));
}

TEST_F(ToplevelListTest, AClosedWindowIsGone) {
  show(1, "one", "editor");
  activate(2, "two", "editor");
  close(1);
  EXPECT_THAT(titles(), ElementsAre("two"));
  close(2);
  EXPECT_FALSE(frontmost());
}

TEST_F(ToplevelListTest, ShowsNoMoreWindowsThanAskedFor) {
  for (int window = 1; window < 4; ++window) show(window, std::to_string(window), "editor");
  activate(4, "4", "editor");
  EXPECT_THAT(list_.frontmost(2)->titles, ElementsAre("4", "1"));
}

}  // namespace
}  // namespace notewick
