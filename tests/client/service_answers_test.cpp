#include "tests/client/service_answers.h"

#include <gmock/gmock.h>

#include <set>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "model/record_json.h"
#include "tests/support/received.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Kind = Ending::Kind;

const std::string ONE_NOTE = R"([{"id":"N","participantId":"2","participantName":"Lena O'Keefe",
    "input":"Phoned","minutes":30,"sessionDate":"2024-05-01","attempts":0}])";
const std::string CACHE = R"([{"id":"2","first_name":"Lena","last_name":"O'Keefe"}])";
const Notification CAPTURED = {"Captured — Lena O'Keefe",
                               "Parked in VELK (30 min). Write it up from your case-notes page "
                               "when you're ready."};

VELKError errorFor(const Ending& ending) {
  switch (ending.kind) {
    case Kind::api:
      return VELKError::api(ending.text);
    case Kind::network:
      return VELKError::network(ending.text);
    default:
      return VELKError::sessionExpired();
  }
}

class ServiceAnswersTest : public WorldTest, public testing::WithParamInterface<ServiceAnswer> {
 protected:
  ServiceAnswersTest() {
    defaults.setBoolean("VELKWidgetVisible", false);
    files.put(supportFile("participants.json"), CACHE);
  }

  /// The next request to this path gets the answer of this row.
  void answersTo(std::string_view path) { service.answersAs(path, GetParam().outcome); }

  /// Lets the requests that were sent be answered, after the row's delay.
  void wait() {
    advance(GetParam().delay);
    service.releasesAll();
  }

  /// The program runs, signed in, with an access token; its past is forgotten.
  void runsSignedIn() {
    signIn();
    service.answers(PARTICIPANTS_PATH, 503);
    launch();
    quietTheWorld();
  }

  void quietTheWorld() {
    forgetThePast();
    files.put(supportFile("watch.log"), "");
    clock.setLocal({2024, 5, 2, 9, 0, 1});
    accessibility.trusted = false;
    app().paused = true;
  }

  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& participant : app().participants) all.push_back(participant.name());
    return all;
  }

  /// The failure stands in the watch log, and nothing else does.
  void expectLogged(const std::string& text) const {
    const auto log = this->text("watch.log");
    EXPECT_EQ(log.substr(std::min<std::size_t>(9, log.size())), "api-error: " + text + "\n");
  }

  void expectNothingSaid() const {
    EXPECT_EQ(text("watch.log"), "");
    EXPECT_THAT(notifier.shown, IsEmpty());
    EXPECT_EQ(views.signIn, nullptr);
  }

  /// Whether the next call has to refresh the access token first.
  bool refreshesNext() {
    service.forgetRequests();
    app().refreshParticipants(true);
    loop.runPosted();
    return service.trail().front() == "POST /api/desktop/auth/refresh";
  }
};

INSTANTIATE_TEST_SUITE_P(All, ServiceAnswersTest, testing::ValuesIn(serviceAnswers()),
                         [](const auto& row) { return row.param.name; });

TEST(ServiceAnswers, AreManyAndEachIsOne) {
  std::set<std::string> names;
  for (const auto& answer : serviceAnswers()) names.insert(answer.name);
  EXPECT_GE(names.size(), 60u);
  EXPECT_EQ(names.size(), serviceAnswers().size());
}

// --- Signing in ----------------------------------------------------------------------------------

TEST_P(ServiceAnswersTest, TheSignInCallEndsAsTheTableSays) {
  const Ending& expected = GetParam().signIn;
  answersTo(LOGIN_PATH);
  Received<void> received;
  VELKClient::shared().login("ada@velk.example", "x", received.completion());
  loop.runPosted();
  EXPECT_EQ(received.only().has_value(), expected.kind == Kind::success);
  if (expected.kind == Kind::success) return;
  EXPECT_EQ(errorOf(received.only()), errorFor(expected));
}

TEST_P(ServiceAnswersTest, TheSignInPanelShowsIt) {
  const Ending& expected = GetParam().signIn;
  launch();
  answersTo(LOGIN_PATH);
  service.holdsAnswers();
  signInPanel().type("ada@velk.example", "x");
  signInPanel().pressSignIn();
  EXPECT_TRUE(signInPanel().busy);
  wait();
  const bool success = expected.kind == Kind::success;
  EXPECT_EQ(views.signIn == nullptr, success);
  EXPECT_EQ(secrets.refreshToken(), success ? std::optional<std::string>("R") : std::nullopt);
  EXPECT_EQ(statusItem().lines().front(),
            success ? "(Signed in as your VELK account)" : "Sign in to VELK…");
  if (success) return;
  EXPECT_EQ(signInPanel().error, expected.text);
  EXPECT_FALSE(signInPanel().busy);
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/login"));
}

// --- Refreshing the token ------------------------------------------------------------------------

class RefreshAnswersTest : public ServiceAnswersTest {
 protected:
  /// The program starts with a note waiting: the list and the note each want a token, and both
  /// refreshes are answered by the row.
  RefreshAnswersTest() {
    signIn();
    files.put(supportFile("outbox.json"), ONE_NOTE);
    answersTo(REFRESH_PATH);
    answersTo(REFRESH_PATH);
    service.answers(PARTICIPANTS_PATH, 200, {{"participants", nlohmann::json::array()}});
    service.answers(CAPTURE_PATH, 200);
    service.holdsAnswers();
    launch();
    accessibility.trusted = false;
    app().paused = true;
    wait();
  }
};

INSTANTIATE_TEST_SUITE_P(All, RefreshAnswersTest, testing::ValuesIn(serviceAnswers()),
                         [](const auto& row) { return row.param.name; });

TEST_P(RefreshAnswersTest, EndsAsTheTableSays) {
  const Ending& expected = GetParam().refresh;
  if (expected.kind == Kind::success) {
    EXPECT_EQ(secrets.refreshToken(), "R");
    EXPECT_THAT(app().participants, IsEmpty());
    EXPECT_THAT(app().outbox, IsEmpty());
    EXPECT_THAT(notifier.shown, ElementsAre(CAPTURED));
    return;
  }
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/refresh", "POST /api/desktop/auth/refresh"));
  EXPECT_THAT(names(), ElementsAre("Lena O'Keefe"));
  ASSERT_THAT(app().outbox, SizeIs(1));
  EXPECT_EQ(app().outbox.front().attempts, 1);
  EXPECT_EQ(app().outbox.front().lastError, expected.text);
  EXPECT_THAT(notifier.shown, IsEmpty());
  const bool expired = expected.kind == Kind::sessionExpired;
  EXPECT_EQ(views.signInsMade, expired ? 1 : 0);
  EXPECT_EQ(secrets.refreshToken(),
            expired ? std::nullopt : std::optional<std::string>("refresh-1"));
  EXPECT_EQ(defaults.values.contains("VELKUserEmail"), !expired);
  if (expired) {
    EXPECT_EQ(text("watch.log"), "");
  } else {
    expectLogged("Couldn't load participants: " + expected.text);
  }
}

// --- Loading participants ------------------------------------------------------------------------

TEST_P(ServiceAnswersTest, TheParticipantsCallEndsAsTheTableSays) {
  const Ending& expected = GetParam().participants;
  runsSignedIn();
  answersTo(PARTICIPANTS_PATH);
  service.holdsAnswers();
  app().refreshParticipants(false);
  wait();
  if (expected.kind == Kind::success) {
    const auto& brought = GetParam().names;
    EXPECT_EQ(names(), brought);
    EXPECT_THAT(decodeRecords<Participant>(text("participants.json")).value(),
                SizeIs(brought.size()));
    EXPECT_THAT(notifier.shown,
                ElementsAre(Notification{
                    "VELK Notewick",
                    "Watching for work on " + std::to_string(brought.size()) + " participants."}));
    EXPECT_EQ(text("watch.log"), "");
    return;
  }
  const std::string told = "Couldn't load participants: " + expected.text;
  EXPECT_THAT(names(), ElementsAre("Lena O'Keefe"));
  EXPECT_EQ(text("participants.json"), CACHE);
  expectLogged(told);
  if (expected.kind == Kind::api) {
    EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick", told}));
  } else {
    EXPECT_THAT(notifier.shown, IsEmpty());
  }
  EXPECT_EQ(views.signIn, nullptr);
}

// --- Handing over a note -------------------------------------------------------------------------

TEST_P(ServiceAnswersTest, TheCaptureCallEndsAsTheTableSays) {
  const Ending& expected = GetParam().capture;
  runsSignedIn();
  answersTo(CAPTURE_PATH);
  service.holdsAnswers();
  app().enqueueNote({"2", "Lena", "O'Keefe"}, "Phoned", 30, "2024-05-01");
  EXPECT_THAT(app().outbox, SizeIs(1));
  wait();
  if (expected.kind == Kind::network) {
    ASSERT_THAT(app().outbox, SizeIs(1));
    EXPECT_EQ(app().outbox.front().attempts, 1);
    EXPECT_EQ(app().outbox.front().lastError, expected.text);
    expectNothingSaid();
    return;
  }
  EXPECT_THAT(app().outbox, IsEmpty());
  advance(0.02);
  EXPECT_EQ(decodeRecords<OutboxItem>(text("outbox.json")).value().size(), 0u);
  EXPECT_EQ(views.signIn, nullptr);
  if (expected.kind == Kind::success) {
    EXPECT_THAT(notifier.shown, ElementsAre(CAPTURED));
    EXPECT_EQ(text("watch.log"), "");
    return;
  }
  const std::string told = "Note for Lena O'Keefe failed: " + expected.text;
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick", told}));
  expectLogged(told);
}

// --- The tokens afterwards -----------------------------------------------------------------------

TEST_P(ServiceAnswersTest, OnlyA401CostsTheAccessTokenAndNothingTheRefreshToken) {
  runsSignedIn();
  const auto refreshToken = secrets.refreshToken();
  answersTo(CAPTURE_PATH);
  app().enqueueNote({"2", "Lena", "O'Keefe"}, "Phoned", 30, "2024-05-01");
  loop.runPosted();
  EXPECT_EQ(secrets.refreshToken(), refreshToken);
  EXPECT_EQ(defaults.string("VELKUserEmail"), "ada@velk.example");
  const bool unauthorised = GetParam().outcome && GetParam().outcome->statusCode == 401;
  EXPECT_EQ(refreshesNext(), unauthorised);
}

}  // namespace
}  // namespace notewick
