#include "app/app_delegate.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "app/constants.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
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

// --- The steps -----------------------------------------------------------------------------------

TEST_F(LaunchTest, SignedOutItTakesTheseStepsAndWritesNothing) {
  accessibility.trusted = false;
  launch();
  EXPECT_THAT(
      takeTrace(),
      ElementsAre("create folders " + SUPPORT_DIR, "keep private " + SUPPORT_DIR,
                  "read pending.json", "read outbox.json", "read participants.json", "status item",
                  "menu", "ask for trust", "every 15 s", "every 60 s", "sign-in panel"));
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(accessibility.prompts, 1);
  EXPECT_EQ(app().lastAxState, std::nullopt) << "the first sample looks";
  EXPECT_THAT(statusItem().appearance, FieldsAre("note.text.badge.plus", "VELK Notewick", " VELK"));
}

TEST_F(LaunchTest, SignedInItLoadsParticipantsAndSendsTheOutboxInPlaceOfThePanel) {
  signIn();
  has("outbox.json", ONE_NOTE);
  knows({"Tobias Hargreave", "Lena O'Keefe"});
  service.onRequest = [this] { trace.push_back("ask the service"); };
  launch();
  EXPECT_EQ(*std::prev(std::ranges::find(trace, "ask the service")), "every 60 s");
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/refresh", "POST /api/desktop/auth/refresh",
                          "GET /api/desktop/participants", "POST /api/desktop/case-notes/capture"));
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(notifier.shown, ElementsAre(captured("Lena O'Keefe", 30)));
}

// --- Stored records ------------------------------------------------------------------------------

TEST_F(LaunchTest, StoredRecordsAreShown) {
  has("pending.json", ONE_PENDING);
  has("outbox.json", ONE_NOTE);
  launch();
  EXPECT_EQ(statusItem().title, " VELK (2)");
  EXPECT_NE(statusItem().find("Log: Lena O'Keefe (~12 min, 2024-05-01)"), nullptr);
  EXPECT_NE(statusItem().find("1 note waiting to send to VELK"), nullptr);
}

TEST_F(LaunchTest, ADamagedFileReadsAsEmptyAndNeitherItNorTheOthersAreTouched) {
  has("pending.json", ONE_PENDING.substr(0, 100));
  has("outbox.json", ONE_NOTE);
  launch();
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_THAT(app().outbox, SizeIs(1));
  EXPECT_EQ(text("pending.json"), ONE_PENDING.substr(0, 100));
}

// --- Signed out ----------------------------------------------------------------------------------

TEST_F(LaunchTest, SignedOutItSamplesTheCachedParticipants) {
  has("participants.json", ONE_PARTICIPANT);
  launch();
  sees({"Lena O'Keefe"});
  EXPECT_THAT(app().sessions, SizeIs(1));
}

TEST_F(LaunchTest, SignedOutItStillTriesTheOutboxEveryMinute) {
  has("outbox.json", ONE_NOTE);
  launch();
  advance(59.9);
  EXPECT_EQ(app().outbox.front().attempts, 1);
  advance(60.1);
  EXPECT_EQ(app().outbox.front().attempts, 3);
  EXPECT_EQ(app().outbox.front().lastError, "Not signed in");
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- The end, and a second start -----------------------------------------------------------------

TEST_F(LaunchTest, TimersOfAProgramThatIsGoneDoNothing) {
  has("outbox.json", ONE_NOTE);
  launch();
  screen.show("Mail", {"Lena O'Keefe"});
  const auto sampling = std::move(app().timer);
  const auto outbox = std::move(app().outboxTimer);
  quit();
  ASSERT_THAT(loop.runningTimers(), ElementsAre(15, 60));
  trace.clear();
  advance(600);
  EXPECT_THAT(trace, IsEmpty());
}

TEST_F(LaunchTest, ASecondStartOpensTheWidgetForTyping) {
  defaults.setBoolean("VELKWidgetVisible", false);
  runsKnowing({"Lena O'Keefe"});
  fakeApplication().startAgain();
  EXPECT_TRUE(widget().key);
}

}  // namespace
}  // namespace notewick
