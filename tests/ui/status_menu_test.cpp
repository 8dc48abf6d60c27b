#include "ui/status_menu.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/support/fake_views.h"

namespace notewick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

Pending caughtWork(const std::string& id, const std::string& participant, std::int64_t minutes) {
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

std::vector<std::string> linesOf(const MenuState& state) {
  return FakeStatusItem::linesOf(makeMenu(state));
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
  state.paused = true;
  state.pendings = {caughtWork("P", "Tobias Hargreave", 3), caughtWork("Q", "Lena O'Keefe", 12)};
  state.outboxCount = 1;
  state.widgetVisible = false;
  EXPECT_THAT(linesOf(state),
              ElementsAre("Sign in to VELK…", "-", "Log: Tobias Hargreave (~3 min, 2024-05-02)",
                          "Log: Lena O'Keefe (~12 min, 2024-05-02)", "-",
                          "(1 note waiting to send to VELK)", "Retry now", "-",
                          "Log work now (call, visit…)", "Show floating widget",
                          "Open my case notes in VELK", "-", "Resume watching",
                          "Reload participants", "Start at login", "-", "Quit VELK Notewick"));
}

// --- What each item does -------------------------------------------------------------------------

TEST(StatusMenu, EveryCommandHasItsActionAndShortcutUnderEachOfItsNames) {
  auto signedIn = signedInState();
  signedIn.outboxCount = 1;
  signedIn.pendings = {caughtWork("P", "Lena O'Keefe", 12), caughtWork("Q", "Lena O'Keefe", 12)};
  MenuState signedOut;
  signedOut.paused = true;
  signedOut.widgetVisible = false;
  auto menu = makeMenu(signedIn);
  std::ranges::copy(makeMenu(signedOut), std::back_inserter(menu));
  const std::string log = "Log: Lena O'Keefe (~12 min, 2024-05-02)";
  EXPECT_THAT(
      menu, IsSupersetOf<MenuItem>({{log, MenuAction::openPending, "", "P"},
                                    {log, MenuAction::openPending, "", "Q"},
                                    {"Retry now", MenuAction::retryOutbox},
                                    {"Log work now (call, visit…)", MenuAction::logNow, "l"},
                                    {"Hide floating widget", MenuAction::toggleWidget, "w"},
                                    {"Show floating widget", MenuAction::toggleWidget, "w"},
                                    {"Open my case notes in VELK", MenuAction::openCaseNotes, "o"},
                                    {"Pause watching", MenuAction::togglePause, "p"},
                                    {"Resume watching", MenuAction::togglePause, "p"},
                                    {"Reload participants", MenuAction::reloadParticipants},
                                    {"Start at login", MenuAction::installLoginItem},
                                    {"Sign in to VELK…", MenuAction::menuSignIn},
                                    {"Sign out of VELK", MenuAction::menuSignOut},
                                    {"Quit VELK Notewick", MenuAction::terminate, "q"}}));
}

// --- Account and watching ------------------------------------------------------------------------

TEST(StatusMenu, NamesThatAreHostileToTheDrawingStayWithinTheirLine) {
  MenuState state = signedInState();
  state.userEmail = "ada@velk.example\nSigned out";
  state.pendings = {caughtWork("P", "Lena\u202E\tO'Keefe", 1), caughtWork("Q", "דנה", 2)};
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
    EXPECT_EQ(menu[1], (MenuItem{"⚠️ Can't see your screen yet — click to fix",
                                 MenuAction::openAccessibilitySettings}));
    EXPECT_TRUE(menu[2].separator);
  }
}

// --- Counts --------------------------------------------------------------------------------------

TEST(StatusMenu, EveryPendingHasALine) {
  auto state = signedInState();
  for (int number = 0; number < 40; ++number)
    state.pendings.push_back(caughtWork(std::to_string(number), "Lena O'Keefe", number));
  EXPECT_EQ(std::ranges::count(makeMenu(state), std::optional(MenuAction::openPending),
                               &MenuItem::action),
            40);
}

TEST(StatusMenu, ParticipantsAndNotesAreCounted) {
  auto state = signedInState();
  for (const std::size_t count : {0u, 1u, 1234u}) {
    state.participantCount = count;
    EXPECT_EQ(linesOf(state)[1], "(Watching · " + std::to_string(count) + " participants)");
  }
  for (const std::size_t count : {2u, 1234u}) {
    state.outboxCount = count;
    EXPECT_THAT(linesOf(state),
                Contains("(" + std::to_string(count) + " notes waiting to send to VELK)"));
  }
}

TEST(StatusMenu, TheTitleCountsPendingsAndNotes) {
  EXPECT_EQ(waitingCount(3, 2), 5U);
  EXPECT_EQ(statusTitle(0), " VELK");
  EXPECT_EQ(statusTitle(1), " VELK (1)");
}

TEST(StatusMenuDeathTest, ACountThatDoesNotFitEndsTheProgram) {
  EXPECT_EXIT((void)waitingCount(std::numeric_limits<std::size_t>::max(), 1),
              testing::ExitedWithCode(1), "^notewick: [^\n]*\n$");
}

}  // namespace
}  // namespace notewick
