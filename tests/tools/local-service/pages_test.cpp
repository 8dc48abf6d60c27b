#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "tests/tools/local-service/test_world.h"
#include "tools/local-service/endpoints.h"

namespace notewick::service {
namespace {

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class PagesTest : public testing::Test {
 protected:
  httplib::Result logIn(const std::string& email, const std::string& password) {
    return world.client().Post("/login", httplib::Params{{"email", email}, {"password", password}});
  }

  /// As a browser that has signed in sees it.
  std::string notesPage() {
    const auto cookie =
        logIn(TestWorld::EMAIL, TestWorld::PASSWORD)->get_header_value("Set-Cookie");
    const auto sent = "a=1; " + cookie.substr(0, cookie.find(';'));
    return world.client().Get("/case-notes", {{"Cookie", sent}})->body;
  }

  TestWorld world;
};

TEST_F(PagesTest, TheNotesLeadToTheFormWithoutASession) {
  for (const auto* const cookie : {"", "notewick_session=", "notewick_session=made-up", "x=y"}) {
    const auto answer = world.client().Get("/case-notes", {{"Cookie", cookie}});
    EXPECT_EQ(statusOf(answer), 303);
    EXPECT_EQ(answer->get_header_value("Location"), "/login");
  }
}

TEST_F(PagesTest, ThePagesRunNothingAndAreNotKept) {
  const auto form = world.client().Get("/login");
  ASSERT_EQ(statusOf(form), 200);
  EXPECT_TRUE(has(form->body, "<form class=\"sign-in\" method=\"post\" action=\"/login\">"));
  EXPECT_TRUE(has(form->body, "<title>Sign in – VELK</title>"));
  EXPECT_EQ(form->get_header_value("Content-Type"), "text/html; charset=utf-8");
  EXPECT_TRUE(form->get_header_value("Content-Security-Policy").starts_with("default-src 'none';"));
  EXPECT_EQ(form->get_header_value("Cache-Control"), "no-store");
}

TEST_F(PagesTest, SigningInSetsACookieThatScriptsAndOtherSitesCannotUse) {
  const auto answer = logIn(TestWorld::EMAIL, TestWorld::PASSWORD);
  EXPECT_EQ(statusOf(answer), 303);
  EXPECT_EQ(answer->get_header_value("Location"), "/case-notes");
  EXPECT_TRUE(answer->get_header_value("Set-Cookie").ends_with("; Path=/; HttpOnly; SameSite=Lax"));
  httplib::Request overTls;
  overTls.params = {{"email", TestWorld::EMAIL}, {"password", TestWorld::PASSWORD}};
  httplib::Response answered;
  pageRoutes(world.service.records(), true).at(1).handler(overTls, answered);
  EXPECT_TRUE(answered.get_header_value("Set-Cookie").ends_with("; Secure"));
}

TEST_F(PagesTest, AWrongPasswordShowsTheFormAgainWithTheEmailEscaped) {
  const auto answer = logIn("\"><script>x", "wrong");
  ASSERT_EQ(statusOf(answer), 401);
  EXPECT_TRUE(has(answer->body, "Invalid email or password"));
  EXPECT_TRUE(has(answer->body, "value=\"&quot;&gt;&lt;script&gt;x\""));
  EXPECT_FALSE(answer->has_header("Set-Cookie"));
  EXPECT_EQ(statusOf(world.post("/login", "{}")), 401);
}

TEST_F(PagesTest, ANoteShowsNameDateMinutesTextAndWhenCaptured) {
  setenv("TZ", "EAST-2", 1);  // two hours ahead of UTC
  tzset();
  EXPECT_TRUE(has(notesPage(), "No notes yet."));
  auto note = noteOf("{{captured}} </p><script>alert(1)</script>");
  note["participantId"] = "p-2";
  ASSERT_EQ(world.capture(world.accessToken(), note), 200);
  const auto page = notesPage();
  EXPECT_TRUE(has(page, "<h2>Bo O&#39;K &lt;&amp; Co&gt;</h2>"));
  EXPECT_TRUE(has(page, "<time datetime=\"2026-03-05\">5 March 2026</time> · 1 min"));
  EXPECT_TRUE(has(page, "{{captured}} &lt;/p&gt;&lt;script&gt;alert(1)&lt;/script&gt;"));
  EXPECT_TRUE(has(page, "Captured 2 February 2026, 04:40"));
  EXPECT_TRUE(has(page, TestWorld::EMAIL));
  EXPECT_FALSE(has(page, "No notes yet."));
  unsetenv("TZ");
  tzset();
}

}  // namespace
}  // namespace notewick::service
