#include "platform/linux/tray/menu_steps.h"

#include <gtest/gtest.h>

#include "ui/status_menu.h"

namespace notewick {
namespace {

using enum MenuStep::Kind;
using Steps = std::vector<MenuStep>;

/// The program's menu with these pendings, and so many notes waiting.
Menu menuWith(const std::vector<std::string>& pendings, std::size_t notes) {
  MenuState state;
  state.signedIn = true;
  state.trusted = true;
  state.outboxCount = notes;
  for (const std::string& id : pendings) {
    Pending pending{};
    pending.id = id;
    pending.participant = "Lena " + id;
    state.pendings.push_back(pending);
  }
  return makeMenu(state);
}

std::vector<std::string> pendings(int count) {
  std::vector<std::string> ids;
  for (int number = 0; number < count; ++number) ids.push_back(std::to_string(number));
  return ids;
}

TEST(MenuSteps, ACountThatChangesIsOneNewTitle) {
  EXPECT_EQ(stepsBetween(menuWith({"a"}, 2), menuWith({"a"}, 2)), Steps{});
  EXPECT_EQ(stepsBetween(menuWith({"a"}, 3), menuWith({"a"}, 2)), (Steps{{retitle, 5}}));
  EXPECT_EQ(stepsBetween({}, {}), Steps{});
}

TEST(MenuSteps, ATitleIsNeverChangedUnderAnotherObjectOrCommand) {
  EXPECT_EQ(stepsBetween(menuWith({"a"}, 0), menuWith({"b"}, 0)),
            (Steps{{remove, 3}, {insert, 3}}));
  EXPECT_EQ(stepsBetween(menuWith({}, 0), menuWith({"a"}, 0)), (Steps{{remove, 3}, {insert, 3}}));
}

TEST(MenuSteps, PendingWorkAndTheLinesOfNotesComeAndGo) {
  EXPECT_EQ(stepsBetween(menuWith({"a", "b"}, 1), menuWith({"a", "b", "c"}, 1)),
            (Steps{{insert, 5}}));
  EXPECT_EQ(stepsBetween(menuWith({"a", "b"}, 1), menuWith({"b"}, 1)), (Steps{{remove, 3}}));
  EXPECT_EQ(stepsBetween(menuWith({"a"}, 0), menuWith({"a"}, 1)).size(), 3U);
  EXPECT_EQ(stepsBetween(menuWith({"a"}, 1), menuWith({"a"}, 0)).size(), 3U);
}

TEST(MenuSteps, AreFewForDifferencesFarApart) {
  auto oneGone = pendings(1000);
  oneGone.erase(oneGone.begin() + 500);
  EXPECT_EQ(stepsBetween(menuWith(pendings(1000), 0), menuWith(oneGone, 1)).size(), 4U);
}

}  // namespace
}  // namespace notewick
