#include "tools/local-service/service.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

constexpr auto PARTICIPANTS = "/api/desktop/participants";

template <class Work>
void atOnce(int count, Work work) {
  std::vector<std::thread> threads;
  for (int at = 0; at < count; ++at) threads.emplace_back([&work, at] { work(at); });
  for (auto& thread : threads) thread.join();
}

TEST(ServiceTest, FiftyRefreshesAtOnceLeaveTheClientSignedInTenMinutesLater) {
  TestWorld world;
  const auto session = world.signIn();
  std::vector<json> answers(50);
  atOnce(50, [&](int at) {
    answers[static_cast<std::size_t>(at)] = jsonOf(world.refresh(session.at("refreshToken")));
  });
  world.clock.advance(10min);
  std::set<std::string> all;
  for (const auto& answer : answers) {
    ASSERT_TRUE(answer.contains("refreshToken")) << answer;
    all.insert(answer.at("refreshToken"));
    EXPECT_EQ(statusOf(world.get(PARTICIPANTS, answer.at("accessToken"))), 200);
    EXPECT_EQ(statusOf(world.refresh(answer.at("refreshToken"))), 200);
  }
  EXPECT_EQ(all.size(), 50U);
  EXPECT_EQ(statusOf(world.refresh(session.at("refreshToken"))), 401);
}

TEST(ServiceTest, ConcurrentCapturesAreAllStoredOnce) {
  const TemporaryFolder folder;
  TestWorld world({.database = folder.file("notes.db").string(), .tlsFolder = folder.path()});
  const auto access = world.accessToken();
  atOnce(16, [&](int at) {
    for (int turn = 0; turn < 5; ++turn) {
      const auto input = std::to_string(at) + "/" + std::to_string(turn);
      EXPECT_EQ(statusOf(world.capture(access, input)), 200);
      EXPECT_EQ(statusOf(world.get(PARTICIPANTS, access)), 200);
    }
  });
  std::set<std::string> inputs;
  for (const auto& note : world.service.notes().all()) inputs.insert(note.input);
  EXPECT_EQ(world.service.notes().all().size(), 80U);
  EXPECT_EQ(inputs.size(), 80U);
}

TEST(ServiceTest, EverythingInItsFileSurvivesARestart) {
  const TemporaryFolder folder;
  const ServiceSettings settings{.database = folder.file("notes.db").string()};
  json session;
  httplib::Headers cookie;
  {
    TestWorld world(settings);
    session = world.signIn();
    cookie = world.browserCookie();
    ASSERT_EQ(statusOf(world.capture(session.at("accessToken"), "before the restart")), 200);
  }
  TestWorld world(settings);
  EXPECT_EQ(statusOf(world.get(PARTICIPANTS, session.at("accessToken"))), 200);
  EXPECT_EQ(statusOf(world.refresh(session.at("refreshToken"))), 200);
  const auto page = world.client().Get("/case-notes", cookie);
  ASSERT_EQ(statusOf(page), 200);
  EXPECT_NE(page->body.find("before the restart"), std::string::npos);
}

TEST(ServiceTest, BodiesThatWouldHurtAreRefused) {
  TestWorld world;
  const auto access = world.accessToken();
  const std::string deep(100'000, '[');
  const std::string balanced = deep + std::string(deep.size(), ']');
  std::string objects;
  for (int at = 0; at < 100'000; ++at) objects += "{\"a\":";
  std::string noise;
  for (int at = 0; at < 10'000; ++at) noise += static_cast<char>((at * 7919) >> 5);
  for (const auto* const path : {"/api/desktop/auth/login", "/api/desktop/auth/refresh",
                                 "/api/desktop/case-notes/capture"}) {
    for (const auto& body :
         {deep, balanced, objects, "{\"a\":" + balanced + "}", noise, std::string(1000, '\0'),
          std::string("{\"email\": 1e999999}"), std::string("\"\\ud800\"")}) {
      EXPECT_EQ(statusOf(world.post(path, body, access)), 400) << path << " " << body.substr(0, 20);
    }
    EXPECT_EQ(statusOf(world.post(path, std::string(Listener::BODY_LIMIT + 1, ' '), access)), 413);
  }
  EXPECT_EQ(statusOf(world.get(PARTICIPANTS, access)), 200);
}

TEST(ServiceTest, NamesItsOriginByItsTransport) {
  const TemporaryFolder folder;
  const TestWorld plain, secure({.tlsFolder = folder.path()});
  EXPECT_EQ(plain.service.origin(), "http://localhost:" + std::to_string(plain.service.port()));
  EXPECT_EQ(secure.service.origin(), "https://localhost:" + std::to_string(secure.service.port()));
  EXPECT_EQ(plain.service.authorityFile(), std::nullopt);
  EXPECT_EQ(secure.service.authorityFile(), folder.file("ca.pem"));
  EXPECT_EQ(plain.service.controlPort(), std::nullopt);
}

TEST(ServiceTest, LogsRequestsOnlyWhenAsked) {
  TestWorld silent{ServiceSettings{}}, logging;
  EXPECT_EQ(statusOf(silent.get("/login")), 200);
  EXPECT_EQ(statusOf(logging.get("/login")), 200);
  EXPECT_TRUE(silent.service.requests().requests().empty());
  EXPECT_EQ(logging.service.requests().requests().size(), 1U);
}

TEST(ServiceTest, StoppingEndsADelayAndStillAnswers) {
  TestWorld world;
  world.service.faults().add(Fault{.delay = 1h});
  int status = -1;
  std::thread waiting([&] { status = statusOf(world.get("/login")); });
  while (world.service.requests().requests().empty()) std::this_thread::yield();
  const auto start = std::chrono::steady_clock::now();
  world.service.stop();
  waiting.join();
  EXPECT_EQ(status, 200);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

}  // namespace
}  // namespace notewick::service
