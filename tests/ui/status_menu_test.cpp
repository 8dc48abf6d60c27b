#include "ui/status_menu.h"

#include <gmock/gmock.h>

#include <limits>

namespace notewick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::Not;

Pending pendingOf(const std::string& id, const std::string& participant, std::int64_t minutes) {
  return {id, participant, "2024-05-02", Date(0), Date(60), minutes, {}};
}

MenuState signedInState() {
  MenuState state;
  state.signedIn = true;
  state.trusted = true;
  state.userEmail = "ada@velk.example";
  state.participantCount = 12;
  return state;
}

/// The menu from top to bottom: "-" a separator, "(text)" a disabled item.
std::vector<std::string> linesOf(const MenuState& state) {
  std::vector<std::string> lines;
  for (const auto& item : makeMenu(state)) {
    if (item.separator) {
      lines.emplace_back("-");
      continue;
    }
    lines.push_back(item.enabled() ? item.title : "(" + item.title + ")");
  }
  return lines;
}

const MenuItem& itemOf(const Menu& menu, const std::string& title) {
  const auto found = std::ranges::find(menu, title, &MenuItem::title);
  if (found == menu.end()) throw std::logic_error("no item " + title);
  return *found;
}

// --- From top to bottom --------------------------------------------------------------------------

TEST(StatusMenu, SignedInWithNothingToDo) {
  EXPECT_THAT(linesOf(signedInState()),
              ElementsAre("(Signed in as ada@velk.example)", "(Watching · 12 participants)", "-",
                          "(No unlogged work spotted)", "-", "Log work now (call, visit…)",
                          "Hide floating widget", "Open my case notes in VELK", "-",
                          "Pause watching", "Reload participants", "Start at login",
                          "Sign out of VELK", "-", "Quit VELK Notewick"));
}

TEST(StatusMenu, SignedOutWithWorkWaiting) {
  MenuState state;
  state.pendings = {pendingOf("P", "Lena O'Keefe", 12)};
  state.outboxCount = 1;
  state.widgetVisible = false;
  EXPECT_THAT(linesOf(state),
              ElementsAre("Sign in to VELK…", "-", "Log: Lena O'Keefe (~12 min, 2024-05-02)", "-",
                          "(1 note waiting to send to VELK)", "Retry now", "-",
                          "Log work now (call, visit…)", "Show floating widget",
                          "Open my case notes in VELK", "-", "Pause watching",
                          "Reload participants", "Start at login", "-", "Quit VELK Notewick"));
}

TEST(StatusMenu, ThreePendingsAndTwoNotes) {
  auto state = signedInState();
  state.pendings = {pendingOf("1", "Tobias Hargreave", 3), pendingOf("2", "Lena O'Keefe", 12),
                    pendingOf("3", "Zoe Abel", 1)};
  state.outboxCount = 2;
  EXPECT_THAT(
      linesOf(state),
      ElementsAre("(Signed in as ada@velk.example)", "(Watching · 12 participants)", "-",
                  "Log: Tobias Hargreave (~3 min, 2024-05-02)",
                  "Log: Lena O'Keefe (~12 min, 2024-05-02)", "Log: Zoe Abel (~1 min, 2024-05-02)",
                  "-", "(2 notes waiting to send to VELK)", "Retry now", "-",
                  "Log work now (call, visit…)", "Hide floating widget",
                  "Open my case notes in VELK", "-", "Pause watching", "Reload participants",
                  "Start at login", "Sign out of VELK", "-", "Quit VELK Notewick"));
}

// --- What each item does -------------------------------------------------------------------------

TEST(StatusMenu, EveryCommandHasItsActionAndShortcut) {
  auto state = signedInState();
  state.outboxCount = 1;
  const auto menu = makeMenu(state);
  const auto expectItem = [&](const char* title, MenuAction action, const char* key) {
    EXPECT_EQ(itemOf(menu, title), (MenuItem{title, action, key, std::nullopt, false}));
  };
  expectItem("Retry now", MenuAction::retryOutbox, "");
  expectItem("Log work now (call, visit…)", MenuAction::logNow, "l");
  expectItem("Hide floating widget", MenuAction::toggleWidget, "w");
  expectItem("Open my case notes in VELK", MenuAction::openCaseNotes, "o");
  expectItem("Pause watching", MenuAction::togglePause, "p");
  expectItem("Reload participants", MenuAction::reloadParticipants, "");
  expectItem("Start at login", MenuAction::installLoginItem, "");
  expectItem("Sign out of VELK", MenuAction::menuSignOut, "");
  expectItem("Quit VELK Notewick", MenuAction::terminate, "q");
}

TEST(StatusMenu, CommandsKeepTheirActionUnderTheirOtherName) {
  auto state = signedInState();
  state.paused = true;
  state.widgetVisible = false;
  const auto menu = makeMenu(state);
  EXPECT_EQ(itemOf(menu, "Resume watching").action, MenuAction::togglePause);
  EXPECT_EQ(itemOf(menu, "Resume watching").key, "p");
  EXPECT_EQ(itemOf(menu, "Show floating widget").action, MenuAction::toggleWidget);
  EXPECT_EQ(itemOf(menu, "Show floating widget").key, "w");
}

TEST(StatusMenu, SigningInIsACommandWithoutShortcut) {
  EXPECT_EQ(itemOf(makeMenu({}), "Sign in to VELK…"),
            (MenuItem{"Sign in to VELK…", MenuAction::menuSignIn, "", std::nullopt, false}));
}

TEST(StatusMenu, APendingItemCarriesItsId) {
  auto state = signedInState();
  state.pendings = {pendingOf("P-1", "Lena O'Keefe", 12), pendingOf("P-2", "Lena O'Keefe", 12)};
  const auto menu = makeMenu(state);
  EXPECT_EQ(menu[3].action, MenuAction::openPending);
  EXPECT_EQ(menu[3].representedObject, "P-1");
  EXPECT_EQ(menu[3].key, "");
  EXPECT_EQ(menu[4].representedObject, "P-2");
}

// --- Account and watching ------------------------------------------------------------------------

TEST(StatusMenu, NamesThatAreHostileToTheDrawingStayWithinTheirLine) {
  MenuState state = signedInState();
  state.userEmail = "ada@velk.example\nSigned out";
  state.pendings = {pendingOf("P", "Lena\u202E\tO'Keefe", 1), pendingOf("Q", "דנה", 2)};
  state.pendings[1].day = "2024\r05";
  const auto lines = linesOf(state);
  EXPECT_EQ(lines[0], "(Signed in as ada@velk.example Signed out)");
  EXPECT_EQ(lines[3], "Log: Lena O'Keefe (~1 min, 2024-05-02)");
  EXPECT_EQ(lines[4], "Log: \u2068דנה\u2069 (~2 min, 2024 05)");
}

TEST(StatusMenu, WithoutAnEmailItIsYourAccount) {
  auto state = signedInState();
  state.userEmail.reset();
  EXPECT_EQ(linesOf(state).front(), "(Signed in as your VELK account)");
}

TEST(StatusMenu, ThePluralIsUsedForEveryCount) {
  auto state = signedInState();
  state.participantCount = 1;
  EXPECT_THAT(linesOf(state), Contains("(Watching · 1 participants)"));
  state.participantCount = 0;
  EXPECT_THAT(linesOf(state), Contains("(Watching · 0 participants)"));
}

TEST(StatusMenu, PausedItSaysSoInPlaceOfWatching) {
  auto state = signedInState();
  state.paused = true;
  EXPECT_EQ(linesOf(state)[1], "(Paused)");
}

TEST(StatusMenu, WithoutTrustItOffersTheRemedyAlsoWhilePaused) {
  auto state = signedInState();
  state.trusted = false;
  for (const bool paused : {false, true}) {
    state.paused = paused;
    const auto menu = makeMenu(state);
    EXPECT_EQ(menu[1].title, "⚠️ Can't see your screen yet — click to fix");
    EXPECT_EQ(menu[1].action, MenuAction::openAccessibilitySettings);
    EXPECT_TRUE(menu[2].separator);
  }
}

TEST(StatusMenu, SignedOutNothingIsSaidAboutWatching) {
  MenuState state;
  state.paused = true;
  EXPECT_THAT(linesOf(state), Not(Contains("(Paused)")));
  EXPECT_EQ(linesOf(state)[1], "-");
}

// --- Counts --------------------------------------------------------------------------------------

TEST(StatusMenu, EveryPendingHasALine) {
  auto state = signedInState();
  for (int number = 0; number < 40; ++number)
    state.pendings.push_back(pendingOf(std::to_string(number), "Lena O'Keefe", number));
  EXPECT_EQ(std::ranges::count(makeMenu(state), std::optional(MenuAction::openPending),
                               &MenuItem::action),
            40);
}

TEST(StatusMenu, ManyNotesAreCounted) {
  auto state = signedInState();
  state.outboxCount = 1234;
  EXPECT_THAT(linesOf(state), Contains("(1234 notes waiting to send to VELK)"));
}

TEST(StatusMenu, TheTitleCountsPendingsAndNotes) {
  EXPECT_EQ(waitingCount(3, 2), 5U);
  EXPECT_EQ(statusTitle(0), " VELK");
  EXPECT_EQ(statusTitle(1), " VELK (1)");
  EXPECT_EQ(statusTitle(5), " VELK (5)");
}

TEST(StatusMenuDeathTest, ACountThatDoesNotFitEndsTheProgram) {
  EXPECT_EXIT((void)waitingCount(std::numeric_limits<std::size_t>::max(), 1),
              testing::ExitedWithCode(1), "^notewick: [^\n]*\n$");
}

}  // namespace
}  // namespace notewick
