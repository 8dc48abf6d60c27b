#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const std::string NO_ACCESS = "ax=OFF (no screen access — grant Accessibility in System Settings)";

class TickTest : public WorldTest {
 protected:
  TickTest() { runsKnowing({"Tobias Hargreave", "Lena O'Keefe"}); }

  /// The program starts with these participants.
  void watches(const std::vector<std::string>& names) {
    quit();
    runsKnowing(names);
  }
  void seesTobias(int count = 1) { sees({"Tobias Hargreave"}, count); }

  [[nodiscard]] const WorkSession& session(const std::string& name) const {
    return app().sessions.at(name);
  }
};

// --- Trust ---------------------------------------------------------------------------------------

TEST_F(TickTest, TheFirstTrustedSampleShowsThatItSees) {
  samples(1);
  EXPECT_EQ(app().lastAxState, true);
  EXPECT_THAT(trace, ElementsAre("menu", "notify VELK Notewick"));
  EXPECT_THAT(notifier.shown,
              ElementsAre(general("Screen access on — now watching for participant work.")));
  samples(20);
  EXPECT_THAT(takeTrace(), SizeIs(2)) << "once";
}

TEST_F(TickTest, LostTrustIsShownOnceAndLoggedInEverySample) {
  samples(1);
  trace.clear();
  accessibility.trusted = false;
  screen.applicationReads = 0;
  samples(2);
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "replace atomically watch.log", "append watch.log"));
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:30 " + NO_ACCESS, "09:00:45 " + NO_ACCESS));
  EXPECT_EQ(screen.applicationReads, 0u);
}

TEST_F(TickTest, TrustIsAskedForASecondTimeBeforeReadingAndNeverWithAPrompt) {
  samples(1);
  const auto prompting = accessibility.promptingQueries;
  accessibility.nextAnswers = {true, false};
  seesTobias();
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:30 " + NO_ACCESS));
  EXPECT_EQ(app().lastAxState, true);
  EXPECT_EQ(accessibility.promptingQueries, prompting);
}

// --- Pause ---------------------------------------------------------------------------------------

TEST_F(TickTest, APauseFreezesEverything) {
  seesTobias(4);
  app().paused = true;
  trace.clear();
  accessibility.trusted = false;
  screen.applicationReads = 0;
  advance(3600);
  EXPECT_EQ(session("Tobias Hargreave").sightings, 4);
  EXPECT_EQ(app().lastAxState, true);
  EXPECT_THAT(trace, IsEmpty());
  EXPECT_EQ(screen.applicationReads, 0u);
  app().paused = false;
  samples(1);
  EXPECT_THAT(app().pendings, SizeIs(1)) << "the session ended long ago";
}

// --- What a sample logs --------------------------------------------------------------------------

TEST_F(TickTest, EverySampleWithTitlesIsLoggedWithItsFirstFourTitlesAndAllMatches) {
  looksElsewhere(1);
  sees({"1", "2", "3", "4", "Lena O'Keefe, Tobias Hargreave"});
  sees({});
  screen.clear();
  samples(1);
  EXPECT_THAT(watchLogLines(), ElementsAre(R"(09:00:15 app=Editor titles=["Unrelated"] matches=[])",
                                           R"(09:00:30 app=Mail titles=["1", "2", "3", "4"] )"
                                           R"(matches=["Tobias Hargreave", "Lena O'Keefe"])"));
}

TEST_F(TickTest, WithoutParticipantsTheScreenIsNotRead) {
  watches({});
  screen.applicationReads = 0;
  seesTobias();
  EXPECT_EQ(screen.applicationReads, 0u);
  EXPECT_THAT(watchLogLines(), IsEmpty());
}

// --- Who is seen ---------------------------------------------------------------------------------

TEST_F(TickTest, EverySampleThatSeesAParticipantExtendsItsSession) {
  sees({"Tobias Hargreave and Lena O'Keefe"});
  const auto first = clock.now();
  looksElsewhere(1);
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Tobias Hargreave").sightings, 1);
  EXPECT_EQ(session("Tobias Hargreave").lastSeen, first);
  EXPECT_EQ(session("Lena O'Keefe").sightings, 2);
  EXPECT_EQ(session("Lena O'Keefe").firstSeen, first);
  EXPECT_EQ(session("Lena O'Keefe").lastSeen, first + Date(30));
}

TEST_F(TickTest, TitlesAreJoinedByABarAndTheApplicationByABlank) {
  watches({"Tobias Hargreave", "Inbox | Drafts"});
  sees({"Inbox", "Drafts"});
  EXPECT_THAT(session("Inbox | Drafts").evidence, ElementsAre("Inbox"));
  sees({"Search", "Call Tobias"}, 1, "Hargreave Records");
  EXPECT_THAT(session("Tobias Hargreave").evidence, ElementsAre("Search"));
}

TEST_F(TickTest, NamesakesShareOneSessionThatCountsBoth) {
  watches({"Lena O'Keefe", "Lena O'Keefe"});
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").sightings, 2);
  EXPECT_THAT(app().sessions, SizeIs(1));
}

TEST_F(TickTest, EvidenceIsTheFirstTitleThatNamesTheParticipant) {
  sees({"Inbox", "RE: Tobias Hargreave", "Hargreave, Tobias", "Lena O'Keefe"});
  sees({"Tobias Hargreave"});
  EXPECT_THAT(session("Tobias Hargreave").evidence,
              ElementsAre("RE: Tobias Hargreave", "Tobias Hargreave"));
  EXPECT_THAT(session("Lena O'Keefe").evidence, ElementsAre("Lena O'Keefe"));
}

// --- The end of a session ------------------------------------------------------------------------

TEST_F(TickTest, FourSightingsBecomeAPendingMoreThanTenMinutesLater) {
  seesTobias(4);
  const auto lastSeen = session("Tobias Hargreave").lastSeen;
  looksElsewhere(40);
  EXPECT_THAT(app().sessions, SizeIs(1));
  EXPECT_THAT(app().pendings, IsEmpty());
  looksElsewhere(1);
  EXPECT_THAT(app().sessions, IsEmpty());
  ASSERT_THAT(app().pendings, SizeIs(1));
  EXPECT_EQ(app().pendings.front().participant, "Tobias Hargreave");
  EXPECT_EQ(app().pendings.front().lastSeen, lastSeen);
}

TEST_F(TickTest, AShorterSessionIsDroppedWithoutATrace) {
  seesTobias(3);
  notifier.shown.clear();
  looksElsewhere(41);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(TickTest, AReturnInTheSampleThatWouldEndASessionContinuesIt) {
  seesTobias();
  looksElsewhere(40);
  seesTobias();
  EXPECT_EQ(session("Tobias Hargreave").sightings, 2);
}

TEST_F(TickTest, ASampleIsOneMomentHoweverLongTheReadingTakes) {
  seesTobias();
  looksElsewhere(39);
  screen.whileReading = [this] { clock.set(clock.now() + Date(0.25)); };
  const auto moment = session("Tobias Hargreave").lastSeen + Date(600);
  sees({"Lena O'Keefe"});
  EXPECT_EQ(session("Lena O'Keefe").firstSeen, moment);
  EXPECT_THAT(app().sessions, SizeIs(2)) << "Tobias has been away for exactly ten minutes";
}

TEST_F(TickTest, SessionsEndWithoutTrustWithoutTitlesAndWithoutParticipants) {
  const std::vector<std::function<void()>> blindness = {
      [this] { accessibility.trusted = false; }, [this] { screen.clear(); },
      [this] { screen.show("Mail", {}); }, [this] { statusItem().choose("Sign out of VELK"); }};
  for (const auto& goBlind : blindness) {
    seesTobias(4);
    goBlind();
    samples(41);
    EXPECT_THAT(app().sessions, IsEmpty());
    accessibility.trusted = true;
  }
}

TEST_F(TickTest, SessionsThatEndTogetherAreAllPromoted) {
  sees({"Tobias Hargreave, Lena O'Keefe"}, 4);
  notifier.shown.clear();
  looksElsewhere(41);
  EXPECT_THAT(notifier.shown,
              UnorderedElementsAre(caught("Tobias Hargreave", 1), caught("Lena O'Keefe", 1)));
}

}  // namespace
}  // namespace notewick
