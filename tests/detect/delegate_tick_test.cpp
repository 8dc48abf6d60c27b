#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string ACCESS_ON = "Screen access on — now watching for participant work.";
const std::string NO_ACCESS = "ax=OFF (no screen access — grant Accessibility in System Settings)";

class TickTest : public WorldTest {
 protected:
  TickTest() {
    signIn();
    watches({"Tobias Hargreave", "Lena O'Keefe"});
  }

  void watches(const std::vector<std::string>& names) {
    knows(names);
    restart();
  }

  /// One sample that sees these titles.
  void sees(const std::vector<std::string>& titles, const std::string& application = "Mail") {
    screen.show(application, titles);
    samples(1);
  }
  void seesTobias() { sees({"Tobias Hargreave"}); }
  void seesNobody() { sees({"Unrelated"}); }

  /// Samples that see nobody, for so many seconds.
  void looksElsewhere(double seconds) {
    screen.show("Editor", {"Unrelated"});
    advance(seconds);
  }

  [[nodiscard]] const WorkSession& session(const std::string& name) const {
    return app().sessions.at(name);
  }
  [[nodiscard]] bool hasSession(const std::string& name) const {
    return app().sessions.contains(name);
  }
  [[nodiscard]] std::string lastLogLine() const {
    const auto lines = watchLogLines();
    return lines.empty() ? "" : lines.back();
  }
};

// --- Trust ---------------------------------------------------------------------------------------

TEST_F(TickTest, TheFirstTrustedSampleSaysThatItSees) {
  EXPECT_EQ(app().lastAxState, std::nullopt);
  deeds.clear();
  samples(1);
  EXPECT_EQ(app().lastAxState, true);
  EXPECT_THAT(deeds, ElementsAre("menu", "notify VELK Notewick"));
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick", ACCESS_ON}));
  const auto later = statusItem().menusSet;
  samples(20);
  EXPECT_THAT(notifier.shown, SizeIs(1));
  EXPECT_EQ(statusItem().menusSet, later);
}

TEST_F(TickTest, LostTrustRebuildsTheMenuOnceAndSaysNothing) {
  samples(1);
  notifier.shown.clear();
  const auto menus = statusItem().menusSet;
  accessibility.trusted = false;
  samples(3);
  EXPECT_EQ(statusItem().menusSet, menus + 1);
  EXPECT_NE(statusItem().find("⚠️ Can't see your screen yet — click to fix"), nullptr);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(TickTest, EverySampleWithoutTrustIsLogged) {
  accessibility.trusted = false;
  screen.show("Mail", {"Tobias Hargreave"});
  samples(3);
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:15 " + NO_ACCESS, "09:00:30 " + NO_ACCESS,
                                           "09:00:45 " + NO_ACCESS));
  EXPECT_EQ(screen.applicationReads, 0u);
}

TEST_F(TickTest, RegainedTrustIsSaidAgain) {
  samples(1);
  accessibility.trusted = false;
  samples(1);
  accessibility.trusted = true;
  samples(2);
  EXPECT_THAT(notifier.shown, SizeIs(2));
  EXPECT_NE(statusItem().find("Watching · 2 participants"), nullptr);
}

TEST_F(TickTest, TrustIsAskedForASecondTimeBeforeReading) {
  samples(1);
  accessibility.nextAnswers = {true, false};
  seesTobias();
  EXPECT_EQ(lastLogLine(), "09:00:30 " + NO_ACCESS);
  EXPECT_FALSE(hasSession("Tobias Hargreave"));
  EXPECT_EQ(app().lastAxState, true);
}

TEST_F(TickTest, ASampleNeverPromptsForTrust) {
  const auto queries = accessibility.promptingQueries;
  accessibility.trusted = false;
  samples(5);
  EXPECT_EQ(accessibility.promptingQueries, queries);
}

// --- Pause ---------------------------------------------------------------------------------------

TEST_F(TickTest, APausedProgramLooksAtNothing) {
  seesTobias();
  app().paused = true;
  const auto lines = watchLogLines();
  const auto queries = accessibility.queries;
  const auto reads = screen.applicationReads;
  accessibility.trusted = false;
  advance(3600);
  EXPECT_EQ(session("Tobias Hargreave").sightings, 1);
  EXPECT_EQ(app().lastAxState, true);
  EXPECT_EQ(watchLogLines(), lines);
  EXPECT_EQ(accessibility.queries, queries);
  EXPECT_EQ(screen.applicationReads, reads);
}

TEST_F(TickTest, TheFirstSampleAfterAFreezeEndsOldSessions) {
  for (int sample = 0; sample < 4; ++sample) seesTobias();
  app().paused = true;
  advance(3600);
  EXPECT_THAT(app().pendings, IsEmpty());
  app().paused = false;
  seesNobody();
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, SizeIs(1));
}

// --- What a sample logs --------------------------------------------------------------------------

TEST_F(TickTest, ASampleIsLoggedWithTitlesAndMatches) {
  sees({"RE: Tobias Hargreave", "a \"quoted\" \\ title"}, "Mail");
  EXPECT_EQ(lastLogLine(),
            "09:00:15 app=Mail titles=[\"RE: Tobias Hargreave\", \"a \\\"quoted\\\" \\\\ title\"] "
            "matches=[\"Tobias Hargreave\"]");
}

TEST_F(TickTest, ASampleWithoutMatchIsLogged) {
  sees({"Unrelated"}, "Editor");
  EXPECT_EQ(lastLogLine(), "09:00:15 app=Editor titles=[\"Unrelated\"] matches=[]");
}

TEST_F(TickTest, TheLogNamesFourTitlesButAllAreSearched) {
  sees({"1", "2", "3", "4", "Lena O'Keefe"});
  EXPECT_EQ(lastLogLine(),
            "09:00:15 app=Mail titles=[\"1\", \"2\", \"3\", \"4\"] matches=[\"Lena O'Keefe\"]");
}

TEST_F(TickTest, MatchesAreLoggedInListOrder) {
  sees({"Lena O'Keefe", "Hargreave, Tobias"});
  EXPECT_THAT(lastLogLine(), HasSubstr("matches=[\"Tobias Hargreave\", \"Lena O'Keefe\"]"));
}

TEST_F(TickTest, WithoutTitlesNothingIsLogged) {
  screen.show("Mail", {});
  samples(1);
  screen.clear();
  samples(1);
  EXPECT_THAT(watchLogLines(), IsEmpty());
}

TEST_F(TickTest, WithoutParticipantsTheScreenIsNotRead) {
  watches({});
  screen.show("Mail", {"Tobias Hargreave"});
  const auto reads = screen.applicationReads;
  samples(3);
  EXPECT_EQ(screen.applicationReads, reads);
  EXPECT_THAT(watchLogLines(), IsEmpty());
}

// --- Who is seen ---------------------------------------------------------------------------------

TEST_F(TickTest, ASightingStartsASession) {
  sees({"Inbox", "RE: Tobias Hargreave"});
  EXPECT_EQ(session("Tobias Hargreave").sightings, 1);
  EXPECT_EQ(session("Tobias Hargreave").firstSeen, clock.now());
  EXPECT_EQ(session("Tobias Hargreave").lastSeen, clock.now());
  EXPECT_THAT(app().sessions, SizeIs(1));
}

TEST_F(TickTest, FurtherSightingsExtendTheSession) {
  seesTobias();
  const auto first = session("Tobias Hargreave").firstSeen;
  seesNobody();
  seesTobias();
  EXPECT_EQ(session("Tobias Hargreave").sightings, 2);
  EXPECT_EQ(session("Tobias Hargreave").firstSeen, first);
  EXPECT_EQ(session("Tobias Hargreave").lastSeen, first + Date(30));
}

TEST_F(TickTest, SessionsOverlap) {
  sees({"Tobias Hargreave and Lena O'Keefe"});
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Tobias Hargreave").sightings, 1);
  EXPECT_EQ(session("Lena O'Keefe").sightings, 2);
}

TEST_F(TickTest, ANameSplitBetweenTwoTitlesIsNotSeen) {
  sees({"Call Tobias", "Hargreave file"});
  EXPECT_THAT(app().sessions, IsEmpty());
}

TEST_F(TickTest, ANameSplitBetweenLastTitleAndApplicationIsSeen) {
  sees({"Inbox", "Call Tobias"}, "Hargreave Records");
  EXPECT_THAT(session("Tobias Hargreave").evidence, ElementsAre("Inbox"));
}

TEST_F(TickTest, ANameInTheApplicationAloneIsSeen) {
  sees({"Inbox", "Drafts"}, "Tobias Hargreave");
  EXPECT_THAT(session("Tobias Hargreave").evidence, ElementsAre("Inbox"));
}

TEST_F(TickTest, TitlesAreJoinedByABarBetweenBlanks) {
  service.backend.participants = {{"1", "Inbox", "| Drafts"}};
  restart();
  sees({"Inbox", "Drafts"});
  EXPECT_TRUE(hasSession("Inbox | Drafts"));
}

TEST_F(TickTest, NamesakesShareOneSessionThatCountsBoth) {
  watches({"Lena O'Keefe", "Lena O'Keefe"});
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").sightings, 2);
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").sightings, 4);
  EXPECT_THAT(app().sessions, SizeIs(1));
}

TEST_F(TickTest, AParticipantListedTwiceCountsTwice) {
  const Participant lena{"1", "Lena", "O'Keefe"};
  service.backend.participants = {lena, lena};
  restart();
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").sightings, 2);
  EXPECT_THAT(lastLogLine(), HasSubstr("matches=[\"Lena O'Keefe\", \"Lena O'Keefe\"]"));
}

// --- Evidence ------------------------------------------------------------------------------------

TEST_F(TickTest, EvidenceIsTheFirstTitleThatNamesTheParticipant) {
  sees({"Inbox", "RE: Tobias Hargreave", "Hargreave, Tobias"});
  EXPECT_THAT(session("Tobias Hargreave").evidence, ElementsAre("RE: Tobias Hargreave"));
}

TEST_F(TickTest, EveryParticipantHasEvidenceOfItsOwn) {
  sees({"Lena O'Keefe", "Tobias Hargreave"});
  EXPECT_THAT(session("Lena O'Keefe").evidence, ElementsAre("Lena O'Keefe"));
  EXPECT_THAT(session("Tobias Hargreave").evidence, ElementsAre("Tobias Hargreave"));
}

TEST_F(TickTest, ARepeatedTitleIsRecordedOnceAndAFourthNever) {
  for (const auto* const number : {"1", "1", "2", "3", "2", "4"})
    sees({std::string("Tobias Hargreave ") + number});
  EXPECT_THAT(session("Tobias Hargreave").evidence,
              ElementsAre("Tobias Hargreave 1", "Tobias Hargreave 2", "Tobias Hargreave 3"));
  EXPECT_EQ(session("Tobias Hargreave").sightings, 6);
}

// --- The end of a session ------------------------------------------------------------------------

TEST_F(TickTest, FourSightingsBecomeAPendingMoreThanTenMinutesLater) {
  for (int sample = 0; sample < 4; ++sample) seesTobias();
  const auto lastSeen = session("Tobias Hargreave").lastSeen;
  looksElsewhere(600);
  EXPECT_TRUE(hasSession("Tobias Hargreave"));
  EXPECT_THAT(app().pendings, IsEmpty());
  looksElsewhere(15);
  EXPECT_THAT(app().sessions, IsEmpty());
  ASSERT_THAT(app().pendings, SizeIs(1));
  EXPECT_EQ(app().pendings.front().observedMinutes, 1);
  EXPECT_EQ(app().pendings.front().lastSeen, lastSeen);
  EXPECT_EQ(app().pendings.front().participant, "Tobias Hargreave");
}

TEST_F(TickTest, NothingIsPromotedWhileTheParticipantIsOnScreen) {
  screen.show("Mail", {"Tobias Hargreave"});
  advance(4 * 3600);
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_EQ(session("Tobias Hargreave").sightings, 4 * 240);
}

TEST_F(TickTest, ThreeSightingsInARowAreDropped) {
  for (int sample = 0; sample < 3; ++sample) seesTobias();
  looksElsewhere(700);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_THAT(notificationTitles(), ElementsAre("VELK Notewick"));
}

TEST_F(TickTest, ThreeSightingsOver45SecondsCount) {
  seesTobias();
  seesNobody();
  seesTobias();
  seesTobias();
  looksElsewhere(615);
  EXPECT_THAT(app().pendings, SizeIs(1));
}

TEST_F(TickTest, TwoSightingsAMinuteApartAreDropped) {
  seesTobias();
  looksElsewhere(45);
  seesTobias();
  looksElsewhere(700);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, IsEmpty());
}

TEST_F(TickTest, KeepsSessionAcrossAGapOfExactlyTenMinutes) {
  seesTobias();
  const auto first = session("Tobias Hargreave").firstSeen;
  looksElsewhere(585);
  seesTobias();
  EXPECT_EQ(session("Tobias Hargreave").sightings, 2);
  EXPECT_EQ(session("Tobias Hargreave").lastSeen - first, Date(600));
}

TEST_F(TickTest, ASampleIsOneMomentHoweverLongTheReadingTakes) {
  seesTobias();
  looksElsewhere(585);
  screen.whileReading = [this] { clock.set(clock.now() + Date(0.25)); };
  const auto moment = session("Tobias Hargreave").lastSeen + Date(600);
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").firstSeen, moment);
  EXPECT_TRUE(hasSession("Tobias Hargreave")) << "not seen for exactly ten minutes";
}

TEST_F(TickTest, AReturnInTheSampleThatWouldEndASessionContinuesIt) {
  seesTobias();
  looksElsewhere(600);
  seesTobias();
  EXPECT_EQ(session("Tobias Hargreave").sightings, 2);
}

TEST_F(TickTest, AReturnAfterTheEndIsANewSession) {
  seesTobias();
  looksElsewhere(615);
  seesTobias();
  EXPECT_EQ(session("Tobias Hargreave").sightings, 1);
}

TEST_F(TickTest, SessionsEndWithoutTrustWithoutTitlesAndWithoutParticipants) {
  const std::vector<std::function<void()>> blindness = {
      [this] { accessibility.trusted = false; }, [this] { screen.clear(); },
      [this] { screen.show("Mail", {}); }, [this] { statusItem().choose("Sign out of VELK"); }};
  for (const auto& goBlind : blindness) {
    signIn();
    accessibility.trusted = true;
    restart();
    app().pendings.clear();
    for (int sample = 0; sample < 4; ++sample) seesTobias();
    goBlind();
    advance(615);
    EXPECT_THAT(app().sessions, IsEmpty());
    EXPECT_THAT(app().pendings, SizeIs(1));
  }
}

TEST_F(TickTest, SessionsThatEndTogetherAreAllPromoted) {
  for (int sample = 0; sample < 4; ++sample) sees({"Tobias Hargreave, Lena O'Keefe"});
  looksElsewhere(615);
  ASSERT_THAT(app().pendings, SizeIs(2));
  EXPECT_THAT(notificationTitles(), Contains("Log it? — Tobias Hargreave"));
  EXPECT_THAT(notificationTitles(), Contains("Log it? — Lena O'Keefe"));
}

TEST_F(TickTest, ASleepOfTheMachineEndsSessionsOnWaking) {
  for (int sample = 0; sample < 4; ++sample) seesTobias();
  screen.show("Mail", {"Unrelated"});
  loop.sleepMachine(8 * 3600);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, SizeIs(1));
}

TEST_F(TickTest, SessionsAreLostAtQuit) {
  for (int sample = 0; sample < 10; ++sample) seesTobias();
  restart();
  EXPECT_THAT(app().sessions, IsEmpty());
  looksElsewhere(700);
  EXPECT_THAT(app().pendings, IsEmpty());
}

}  // namespace
}  // namespace notewick
