#include "tools/local-service/listener.h"

#include <gtest/gtest.h>

#include <future>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using httplib::Request;
using httplib::Response;

void echo(const Request& request, Response& response) {
  response.set_content(request.method + " " + request.path + " " + request.body, "text/plain");
}

class ListenerTest : public testing::Test {
 protected:
  Listener listener{
      0, std::nullopt, {{{"GET", "/a", echo}, {"POST", "/a", echo}}, {{"DELETE", "/a", echo}}}};
  httplib::Client client = clientOf(listener.port());
};

TEST_F(ListenerTest, RoutesByMethodAndPath) {
  EXPECT_EQ(client.Get("/a?b=c")->body, "GET /a ");
  EXPECT_EQ(client.Post("/a", "body", "text/plain")->body, "POST /a body");
  EXPECT_EQ(client.Delete("/a")->body, "DELETE /a ");
  EXPECT_EQ(statusOf(client.Head("/a")), 200);
  for (const auto* const path : {"/", "/a/", "/A", "/ab"}) {
    EXPECT_EQ(statusOf(client.Get(path)), 404) << path;
  }
  EXPECT_EQ(jsonOf(client.Post("/b", "x", "text/plain")).at("error"), "Not found");
}

TEST_F(ListenerTest, TakesABodyUpToTheLimitAndRefusesMore) {
  const std::string body(Listener::BODY_LIMIT, 'x');
  EXPECT_EQ(statusOf(client.Post("/a", body, "text/plain")), 200);
  EXPECT_EQ(statusOf(client.Post("/a", body + "x", "text/plain")), 413);
}

TEST_F(ListenerTest, RefusesAPortThatIsTaken) {
  EXPECT_THROW(Listener(listener.port(), std::nullopt, {}), std::runtime_error);
}

TEST(ListenerAnswerTest, AnswersWhatHandlersThrowAndReturn) {
  const Listener listener(
      0, std::nullopt,
      {{{"GET", "/refusal", [](auto&, auto&) { throw Refusal(418, "No \"tea\""); }},
        {"GET", "/json", [](auto&, auto&) { std::ignore = nlohmann::json::parse("{"); }},
        {"GET", "/gone", [](auto&, auto& response) { response.status = 404; }},
        {"GET", "/other", [](auto&, auto&) { throw std::runtime_error("secret"); }},
        {"GET", "/good", answeringJson([](const auto&) { return nlohmann::json("\xff"); })}}});
  auto client = clientOf(listener.port());
  EXPECT_EQ(statusOf(client.Get("/refusal")), 418);
  EXPECT_EQ(jsonOf(client.Get("/refusal")), nlohmann::json({{"error", "No \"tea\""}}));
  EXPECT_EQ(statusOf(client.Get("/json")), 400);
  EXPECT_EQ(statusOf(client.Get("/gone")), 404);
  EXPECT_EQ(client.Get("/gone")->body, "");
  EXPECT_EQ(statusOf(client.Get("/other")), 500);
  EXPECT_EQ(client.Get("/other")->body.find("secret"), std::string::npos);
  const auto good = client.Get("/good");
  EXPECT_EQ(good->get_header_value("Content-Type"), "application/json");
  EXPECT_EQ(good->get_header_value("Cache-Control"), "no-store");
  EXPECT_EQ(good->body, "\"\uFFFD\"");
}

TEST(ListenerStopTest, DeliversTheAnswerBeingMade) {
  std::promise<void> asked, release;
  const Handler slow = [&](const Request&, Response& response) {
    asked.set_value();
    release.get_future().wait();
    response.set_content("in the end", "text/plain");
  };
  auto listener =
      std::make_unique<Listener>(0, std::nullopt, std::vector<Routes>{{{"GET", "/", slow}}});
  const auto get = [port = listener->port()] { return clientOf(port).Get("/"); };
  auto answer = std::async(std::launch::async, get);
  asked.get_future().wait();
  auto stopping = std::async(std::launch::async, [&] { listener.reset(); });
  while (get().error() != httplib::Error::Connection) {  // it has begun to stop
  }
  release.set_value();
  EXPECT_EQ(answer.get()->body, "in the end");
}

}  // namespace
}  // namespace notewick::service
