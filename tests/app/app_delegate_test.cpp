#include "app/app_delegate.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "app/constants.h"
#include "app/entry.h"
#include "model/json_text.h"
#include "model/local_store.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string ONE_PENDING = R"([{"id":"P","participant":"Lena O'Keefe","day":"2024-05-01",
    "firstSeen":736246800,"lastSeen":736246900.5,"observedMinutes":12,"evidence":["Plan"]}])";
const std::string ONE_NOTE = R"([{"id":"N","participantId":"2","participantName":"Lena O'Keefe",
    "input":"Phoned","minutes":30,"sessionDate":"2024-05-01","attempts":1,"lastError":"busy"}])";
const std::string ONE_PARTICIPANT = R"([{"id":"2","first_name":"Lena","last_name":"O'Keefe"}])";

class LaunchTest : public WorldTest {
 protected:
  void has(const std::string& file, const std::string& contents) {
    files.put(supportFile(file), contents);
  }
};

// --- The first launch ----------------------------------------------------------------------------

TEST_F(LaunchTest, AFirstLaunchMakesTheFolderAndAsksForSignInAndTrust) {
  accessibility.trusted = false;
  launch();
  EXPECT_TRUE(files.folderExists(SUPPORT_DIR));
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(accessibility.prompts, 1);
}

TEST_F(LaunchTest, TakesItsStepsInTheirOrder) {
  launch();
  EXPECT_THAT(newDeeds(),
              ElementsAre("create folders " + SUPPORT_DIR, "read pending.json", "read outbox.json",
                          "read participants.json", "status item", "menu", "ask for trust",
                          "every 15 s", "every 60 s", "sign-in panel"));
}

TEST_F(LaunchTest, SignedInItAsksTheServiceAfterAllElse) {
  signIn();
  has("outbox.json", ONE_NOTE);
  service.onRequest = [this] { deeds.push_back("ask the service"); };
  launch();
  const auto asked = std::ranges::find(deeds, "ask the service");
  ASSERT_NE(asked, deeds.end());
  EXPECT_EQ(*std::prev(asked), "every 60 s");
  const auto trail = service.trail();
  EXPECT_LT(std::ranges::find(trail, "GET " + std::string(PARTICIPANTS_PATH)),
            std::ranges::find(trail, "POST " + std::string(CAPTURE_PATH)));
}

TEST_F(LaunchTest, WithoutFilesNothingIsWritten) {
  launch();
  EXPECT_THAT(files.paths(), IsEmpty());
}

TEST_F(LaunchTest, TheStatusItemShowsTheProduct) {
  launch();
  EXPECT_EQ(statusItem().appearance.symbolName, "note.text.badge.plus");
  EXPECT_EQ(statusItem().appearance.accessibilityDescription, "VELK Notewick");
  EXPECT_EQ(statusItem().appearance.title, " VELK");
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_THAT(statusItem().menu, testing::Not(IsEmpty()));
}

TEST_F(LaunchTest, AFolderThatCannotBeMadeDoesNotStopIt) {
  files.failWrites = true;
  launch();
  EXPECT_NE(views.statusItem, nullptr);
  EXPECT_THAT(loop.runningTimers(), ElementsAre(15, 60));
}

TEST_F(LaunchTest, TrustIsNotFollowedBeforeTheFirstSample) {
  launch();
  EXPECT_EQ(accessibility.promptingQueries, 1);
  EXPECT_EQ(app().lastAxState, std::nullopt);
  advance(14.9);
  EXPECT_EQ(app().lastAxState, std::nullopt);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

// --- Stored records ------------------------------------------------------------------------------

TEST_F(LaunchTest, StoredRecordsAreShown) {
  has("pending.json", ONE_PENDING);
  has("outbox.json", ONE_NOTE);
  has("participants.json", ONE_PARTICIPANT);
  launch();
  EXPECT_EQ(statusItem().title, " VELK (2)");
  EXPECT_NE(statusItem().find("Log: Lena O'Keefe (~12 min, 2024-05-01)"), nullptr);
  EXPECT_NE(statusItem().find("1 note waiting to send to VELK"), nullptr);
  ASSERT_THAT(app().outbox, SizeIs(1));
  EXPECT_EQ(app().outbox.front().attempts, 1);
  EXPECT_THAT(app().participants, ElementsAre(Participant{"2", "Lena", "O'Keefe"}));
}

TEST_F(LaunchTest, DamagedFilesReadAsEmptyAndAreLeftAlone) {
  has("pending.json", "{}");
  has("outbox.json", ONE_NOTE.substr(0, ONE_NOTE.size() / 2));
  has("participants.json", std::string(100'000, '['));
  launch();
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_EQ(text("pending.json"), "{}");
  EXPECT_EQ(text("outbox.json"), ONE_NOTE.substr(0, ONE_NOTE.size() / 2));
  EXPECT_EQ(text("participants.json"), std::string(100'000, '['));
}

TEST_F(LaunchTest, OneDamagedFileDoesNotTouchTheOthers) {
  has("pending.json", "[{}]");
  has("outbox.json", ONE_NOTE);
  launch();
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_THAT(app().outbox, SizeIs(1));
}

TEST_F(LaunchTest, ANoteReplacesAnOutboxThatCouldNotBeRead) {
  has("outbox.json", R"([{"id":"N","participantId":"2","participantName":"Lena O'Keefe",
      "input":"Phoned","minutes":30,"sessionDate":"2024-05-01"}])");
  launch();
  EXPECT_THAT(app().outbox, IsEmpty());
  app().enqueueNote({"2", "Lena", "O'Keefe"}, "Visited", 15, "2024-05-02");
  const auto stored = parseJson(text("outbox.json")).value();
  ASSERT_THAT(stored, SizeIs(1));
  EXPECT_EQ(stored[0]["input"], "Visited");
}

TEST_F(LaunchTest, SigningOutEmptiesTheParticipantsFileOnly) {
  has("pending.json", ONE_PENDING);
  has("outbox.json", ONE_NOTE);
  service.isUnreachable("offline");
  signIn();
  has("participants.json", ONE_PARTICIPANT);
  launch();
  const auto pendingBefore = text("pending.json");
  const auto outboxBefore = text("outbox.json");
  statusItem().choose("Sign out of VELK");
  EXPECT_EQ(parseJson(text("participants.json")), nlohmann::json::array());
  EXPECT_EQ(text("pending.json"), pendingBefore);
  EXPECT_EQ(text("outbox.json"), outboxBefore);
}

// --- Signed in -----------------------------------------------------------------------------------

TEST_F(LaunchTest, SignedInItFetchesParticipantsAndSendsTheOutboxAtOnce) {
  signIn();
  has("outbox.json", ONE_NOTE);
  knows({"Tobias Hargreave", "Lena O'Keefe"});
  launch();
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(service.requestsTo(PARTICIPANTS_PATH), SizeIs(1));
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(1));
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_THAT(notificationTitles(), ElementsAre("Captured — Lena O'Keefe"));
  samples(1);
  EXPECT_THAT(
      notifier.shown.back(),
      (Notification{"VELK Notewick", "Screen access on — now watching for participant work."}));
}

TEST_F(LaunchTest, AFailedFirstRefreshKeepsTheCacheAndSaysNothing) {
  signIn();
  has("participants.json", ONE_PARTICIPANT);
  service.isUnreachable("offline");
  launch();
  EXPECT_THAT(app().participants, SizeIs(1));
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_EQ(text("participants.json"), ONE_PARTICIPANT);
}

TEST_F(LaunchTest, TheSignInOutlivesARestart) {
  launch();
  signInWithPanel();
  restart();
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_NE(statusItem().find("Signed in as ada@velk.example"), nullptr);
}

// --- Signed out ----------------------------------------------------------------------------------

TEST_F(LaunchTest, SignedOutItAsksTheServiceNothing) {
  has("outbox.json", ONE_NOTE);
  launch();
  EXPECT_THAT(service.requests, IsEmpty());
  EXPECT_EQ(app().outbox.front().attempts, 1);
}

TEST_F(LaunchTest, SignedOutItSamplesTheCachedParticipants) {
  has("participants.json", ONE_PARTICIPANT);
  launch();
  screen.show("Mail", {"Lena O'Keefe"});
  samples(4);
  EXPECT_EQ(app().sessions.at("Lena O'Keefe").sightings, 4);
}

TEST_F(LaunchTest, SignedOutItStillTriesTheOutboxEveryMinute) {
  has("outbox.json", ONE_NOTE);
  launch();
  advance(59.9);
  EXPECT_EQ(app().outbox.front().attempts, 1);
  advance(0.1);
  EXPECT_EQ(app().outbox.front().attempts, 2);
  EXPECT_EQ(app().outbox.front().lastError, "Not signed in");
  advance(60);
  EXPECT_EQ(app().outbox.front().attempts, 3);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- Timers --------------------------------------------------------------------------------------

TEST_F(LaunchTest, BothTimersRunWhetherSignedInOrNot) {
  launch();
  EXPECT_THAT(loop.runningTimers(), ElementsAre(15, 60));
  signIn();
  restart();
  EXPECT_THAT(loop.runningTimers(), ElementsAre(15, 60));
}

TEST_F(LaunchTest, PausingLeavesTheTimersRunning) {
  launch();
  statusItem().choose("Pause watching");
  EXPECT_THAT(loop.runningTimers(), ElementsAre(15, 60));
}

TEST_F(LaunchTest, TimersOfAProgramThatIsGoneDoNothing) {
  has("outbox.json", ONE_NOTE);
  launch();
  screen.show("Mail", {"Lena O'Keefe"});
  const std::weak_ptr<AppDelegate> program = delegate;
  const auto sampling = std::move(app().timer);
  const auto outbox = std::move(app().outboxTimer);
  quit();
  ASSERT_THAT(loop.runningTimers(), ElementsAre(15, 60));
  EXPECT_TRUE(program.expired());
  const auto before = deeds;
  advance(600);
  EXPECT_EQ(deeds, before);
}

TEST_F(LaunchTest, NothingIsSavedAtQuit) {
  signIn();
  knows({"Lena O'Keefe"});
  launch();
  screen.show("Mail", {"Lena O'Keefe"});
  samples(10);
  const auto before = deeds;
  quit();
  EXPECT_EQ(deeds, before);
}

// --- The widget's setting ------------------------------------------------------------------------

TEST_F(LaunchTest, TheWidgetCountsAsVisibleUnlessABooleanSaysNo) {
  launch();
  EXPECT_TRUE(app().widgetVisible());
  for (const FakeUserDefaults::Value& value :
       {FakeUserDefaults::Value("false"), FakeUserDefaults::Value(0.0),
        FakeUserDefaults::Value(true)}) {
    defaults.values["VELKWidgetVisible"] = value;
    EXPECT_TRUE(app().widgetVisible());
  }
  defaults.values["VELKWidgetVisible"] = false;
  EXPECT_FALSE(app().widgetVisible());
}

TEST_F(LaunchTest, TheWidgetsSettingIsStoredAsABoolean) {
  launch();
  app().setWidgetVisible(false);
  EXPECT_EQ(defaults.values.at("VELKWidgetVisible"), FakeUserDefaults::Value(false));
  app().setWidgetVisible(true);
  EXPECT_EQ(defaults.values.at("VELKWidgetVisible"), FakeUserDefaults::Value(true));
}

// --- A second start ------------------------------------------------------------------------------

TEST_F(LaunchTest, ASecondStartOpensTheWidgetForTyping) {
  signIn();
  knows({"Lena O'Keefe"});
  launch();
  statusItem().choose("Hide floating widget");
  fakeApplication().startAgain();
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().key);
}

// --- A locked secret store -----------------------------------------------------------------------

class LockedLaunchTest : public LaunchTest {
 protected:
  LockedLaunchTest() {
    signIn();
    secrets.locked = true;
    has("outbox.json", ONE_NOTE);
    knows({"Lena O'Keefe"});
    launch();
  }
};

TEST_F(LockedLaunchTest, TheUserIsAskedOnceAndNotSignedOut) {
  advance(600);
  EXPECT_EQ(secrets.unlockRequests, 1u);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_NE(statusItem().find("Signed in as ada@velk.example"), nullptr);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LockedLaunchTest, NotesWaitMeanwhile) {
  advance(60);
  ASSERT_THAT(app().outbox, SizeIs(1));
  EXPECT_EQ(app().outbox.front().lastError, "The password store is locked");
  EXPECT_THAT(notificationTitles(), ElementsAre("VELK Notewick"));
}

TEST_F(LockedLaunchTest, OnceOpenItGoesOnAsSignedIn) {
  secrets.userAnswers(true);
  EXPECT_THAT(app().participants, SizeIs(1));
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_THAT(notificationTitles(), ElementsAre("Captured — Lena O'Keefe"));
  EXPECT_NE(statusItem().find("Watching · 1 participants"), nullptr);
}

TEST_F(LockedLaunchTest, AStoreThatStaysShutLeadsToTheSignInPanel) {
  secrets.userAnswers(false);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_NE(statusItem().find("Sign in to VELK…"), nullptr);
  advance(600);
  EXPECT_EQ(secrets.unlockRequests, 1u);
}

}  // namespace
}  // namespace notewick
