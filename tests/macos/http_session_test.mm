#include "platform/macos/http_session.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "platform/macos/main_loop.h"
#include "tests/macos/eventually.h"
#include "tools/local-service/service.h"

namespace notewick {
namespace {

using Answer = tl::expected<HttpResponse, TransportError>;

class MacosHttpSessionTest : public testing::Test {
 protected:
  [[nodiscard]] HttpRequest request(const std::string& method, const std::string& path) const {
    return {method,
            service_.origin() + path,
            {{"Content-Type", "application/json"}, {"User-Agent", "velk-notewick/1.0 (macOS)"}},
            std::nullopt,
            60};
  }

  Answer send(const HttpRequest& request) {
    std::optional<Answer> arrived;
    session_->send(request, [&](const Answer& answer) { arrived = answer; });
    EXPECT_FALSE(arrived) << "answered inside the call";
    EXPECT_TRUE(eventually([&] { return arrived.has_value(); }));
    return arrived.value_or(tl::unexpected(TransportError{"never answered"}));
  }

  void fault(const nlohmann::json& json) { service_.faults().add(json); }

  service::LocalService service_{{.controlPort = 0}};
  CocoaMainLoop loop_;
  std::unique_ptr<HttpSession> session_ =
      std::make_unique<UrlSession>(HttpSessionConfiguration{90}, loop_);
};

TEST_F(MacosHttpSessionTest, SendsTheHeadersGivenAndDeliversStatusAndBody) {
  HttpRequest wrong = request("POST", "/api/desktop/auth/login");
  wrong.body = R"({"email":"dana@example.org","password":"wrong"})";
  const Answer answer = send(wrong);
  ASSERT_TRUE(answer) << answer.error().description;
  EXPECT_EQ(answer->statusCode, 401);
  EXPECT_NE(answer->body.value_or("").find("Invalid email or password"), std::string::npos);
  const auto sent = service_.requests().at(0);
  EXPECT_EQ(sent.at("headers").value("User-Agent", ""), "velk-notewick/1.0 (macOS)");
  EXPECT_EQ(sent.at("headers").value("Content-Type", ""), "application/json");
  EXPECT_FALSE(sent.at("headers").contains("Authorization"));
}

TEST_F(MacosHttpSessionTest, TakesARedirectForTheAnswerAlsoWithoutABody) {
  fault({{"path", "/a"}, {"status", 302}, {"headers", {{"Location", "/b"}}}});
  const Answer answer = send(request("GET", "/a"));
  ASSERT_TRUE(answer) << answer.error().description;
  EXPECT_EQ(answer->statusCode, 302);
  EXPECT_EQ(answer->body, std::nullopt);
  EXPECT_EQ(service_.requests().size(), 1U);
}

TEST_F(MacosHttpSessionTest, SendsNoCookieBack) {
  fault({{"path", "/a"}, {"status", 200}, {"headers", {{"Set-Cookie", "kept=1; Path=/"}}}});
  ASSERT_TRUE(send(request("GET", "/a")));
  ASSERT_TRUE(send(request("GET", "/a")));
  EXPECT_FALSE(service_.requests().at(1).at("headers").contains("Cookie"));
}

TEST_F(MacosHttpSessionTest, FailsWithoutASchemeAnAnswerInTimeOrAWholeOne) {
  fault({{"path", "/late"}, {"delay", 30}});
  fault({{"path", "/cut"}, {"cut", "before"}});
  fault({{"path", "/broken"},
         {"cut", "middle"},
         {"status", 200},
         {"body", std::string(100000, 'x')}});
  for (const std::string& url : {std::string("/a"), service_.origin() + "/late",
                                 service_.origin() + "/cut", service_.origin() + "/broken"}) {
    HttpRequest impatient = request("GET", "/");
    impatient.url = url;
    impatient.timeout = 1;
    const Answer answer = send(impatient);
    ASSERT_FALSE(answer) << url;
    EXPECT_NE(answer.error().description, "") << url;
  }
}

TEST_F(MacosHttpSessionTest, TakesABodyOf8MiBAndOfALongerOneTheStatusAlone) {
  constexpr std::size_t LONGEST = 8 * 1024 * 1024;
  fault({{"path", "/a"}, {"status", 200}, {"body", std::string(LONGEST, 'x')}});
  EXPECT_EQ(send(request("GET", "/a")).value().body.value_or("").size(), LONGEST);
  fault({{"path", "/b"}, {"status", 503}, {"body", std::string(LONGEST + 1, 'x')}});
  const Answer longer = send(request("GET", "/b"));
  ASSERT_TRUE(longer) << longer.error().description;
  EXPECT_EQ(longer->statusCode, 503);
  EXPECT_EQ(longer->body, std::nullopt);
}

TEST_F(MacosHttpSessionTest, KeepsAnswersThatComeTogetherApart) {
  fault({{"path", "/a"}, {"status", 200}, {"body", "of a"}, {"delay", 0.1}});
  fault({{"path", "/b"}, {"status", 201}, {"body", "of b"}});
  std::vector<std::string> bodies(2);
  session_->send(request("GET", "/a"), [&](Answer a) { bodies[0] = a->body.value_or(""); });
  session_->send(request("GET", "/b"), [&](Answer b) { bodies[1] = b->body.value_or(""); });
  EXPECT_TRUE(eventually([&] { return !bodies[0].empty() && !bodies[1].empty(); }));
  EXPECT_EQ(bodies, (std::vector<std::string>{"of a", "of b"}));
}

TEST_F(MacosHttpSessionTest, KnowsNoProxyForLoopback) {
  const UrlSession session(HttpSessionConfiguration{90}, loop_);
  const auto proxiesFor = [&](const std::string& url) {
    return session.native(url).configuration.connectionProxyDictionary;
  };
  EXPECT_TRUE([proxiesFor("https://localhost:8443/a") isEqual:@{}]);
  EXPECT_TRUE([proxiesFor("http://127.0.0.1:8080/") isEqual:@{}]);
  EXPECT_FALSE([proxiesFor("https://velk.example/") isEqual:@{}]) << "as the user has set them";
}

TEST_F(MacosHttpSessionTest, DropsWhatHasNotRunWhenDestroyed) {
  fault({{"path", "/a"}, {"delay", 0.2}, {"times", 1}});
  bool answered = false;
  session_->send(request("GET", "/a"), [&](const Answer&) { answered = true; });
  session_ = std::make_unique<UrlSession>(HttpSessionConfiguration{90}, loop_);
  ASSERT_TRUE(send(request("GET", "/login")));
  EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace notewick
