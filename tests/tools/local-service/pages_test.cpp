#include "tools/local-service/pages.h"

#include <gtest/gtest.h>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

class PagesTest : public testing::Test {
 protected:
  void expectSentTo(const std::string& place, const httplib::Result& result) {
    ASSERT_EQ(statusOf(result), 303);
    EXPECT_EQ(result->get_header_value("Location"), place);
  }

  httplib::Result logIn(const std::string& email, const std::string& password) {
    return world.client().Post("/login", httplib::Params{{"email", email}, {"password", password}});
  }

  std::string notesPage(const httplib::Headers& cookie) {
    const auto page = world.client().Get("/case-notes", cookie);
    return page ? page->body : "";
  }

  static bool has(const std::string& page, const std::string& text) {
    return page.find(text) != std::string::npos;
  }

  TestWorld world;
};

TEST_F(PagesTest, TheRootLeadsToTheNotesAndThoseToTheForm) {
  expectSentTo("/case-notes", world.client().Get("/"));
  expectSentTo("/login", world.client().Get("/case-notes"));
  const auto form = world.client().Get("/login");
  ASSERT_EQ(statusOf(form), 200);
  EXPECT_TRUE(has(form->body, "<form class=\"sign-in\" method=\"post\" action=\"/login\">"));
}

TEST_F(PagesTest, SigningInSetsACookieThatScriptsAndOtherSitesCannotUse) {
  const auto answer = logIn(TestWorld::EMAIL, TestWorld::PASSWORD);
  expectSentTo("/case-notes", answer);
  const auto cookie = answer->get_header_value("Set-Cookie");
  EXPECT_TRUE(has(cookie, "; HttpOnly"));
  EXPECT_TRUE(has(cookie, "; SameSite=Lax"));
  EXPECT_FALSE(has(cookie, "Secure"));
  EXPECT_TRUE(has(notesPage(world.browserCookie()), "No notes yet."));
}

TEST_F(PagesTest, OverTlsTheCookieGoesNowhereElse) {
  const TemporaryFolder folder;
  TestWorld secure({.tlsFolder = folder.path()});
  EXPECT_EQ(statusOf(secure.client().Get("/login")), 200);
  const auto answer = secure.client().Post(
      "/login", httplib::Params{{"email", TestWorld::EMAIL}, {"password", TestWorld::PASSWORD}});
  ASSERT_EQ(statusOf(answer), 303);
  EXPECT_TRUE(has(answer->get_header_value("Set-Cookie"), "; Secure"));
}

TEST_F(PagesTest, AWrongPasswordShowsTheFormAgainWithTheEmailEscaped) {
  const auto answer = logIn("\"><script>x", "wrong");
  ASSERT_EQ(statusOf(answer), 401);
  EXPECT_TRUE(has(answer->body, "Invalid email or password"));
  EXPECT_TRUE(has(answer->body, "value=\"&quot;&gt;&lt;script&gt;x\""));
  EXPECT_FALSE(has(answer->body, "<script"));
  EXPECT_FALSE(answer->has_header("Set-Cookie"));
}

TEST_F(PagesTest, AFormWithoutFieldsIsAWrongPassword) {
  EXPECT_EQ(statusOf(world.post("/login", "{}")), 401);
}

TEST_F(PagesTest, NotesShowNameDateMinutesTextAndWhenCaptured) {
  ASSERT_EQ(statusOf(world.capture(world.accessToken(), "Rang about the flat")), 200);
  const auto page = notesPage(world.browserCookie());
  EXPECT_TRUE(has(page, "<h2>Tobias Hargreave</h2>"));
  EXPECT_TRUE(has(page, "<time datetime=\"2026-03-05\">5 March 2026</time> · 30 min"));
  EXPECT_TRUE(has(page, "<p class=\"note\">Rang about the flat</p>"));
  EXPECT_TRUE(has(page, "Captured 2 February 2026, "));
  EXPECT_TRUE(has(page, TestWorld::EMAIL));
}

TEST_F(PagesTest, NotesStandNewestFirst) {
  const auto access = world.accessToken();
  ASSERT_EQ(statusOf(world.capture(access, "the older")), 200);
  ASSERT_EQ(statusOf(world.capture(access, "the newer")), 200);
  const auto page = notesPage(world.browserCookie());
  ASSERT_TRUE(has(page, "the older"));
  EXPECT_LT(page.find("the newer"), page.find("the older"));
}

TEST_F(PagesTest, EverythingFromOutsideIsEscaped) {
  const auto account = world.service.accounts().save("<i>@example.org", TestWorld::PASSWORD);
  world.service.accounts().saveParticipants(account, {{"p-101", "<b>Bo", "O'K & \"Co\""}});
  const auto login = jsonOf(world.post(
      "/api/desktop/auth/login", R"({"email": "<i>@example.org", "password": "right horse"})"));
  ASSERT_EQ(statusOf(world.capture(login.at("accessToken"), "</p><script>alert(1)</script>")), 200);
  const auto answer = logIn("<i>@example.org", TestWorld::PASSWORD);
  const auto cookie = answer->get_header_value("Set-Cookie");
  const auto page = notesPage({{"Cookie", cookie.substr(0, cookie.find(';'))}});
  EXPECT_TRUE(has(page, "<h2>&lt;b&gt;Bo O&#39;K &amp; &quot;Co&quot;</h2>"));
  EXPECT_TRUE(has(page, "&lt;/p&gt;&lt;script&gt;alert(1)&lt;/script&gt;"));
  EXPECT_TRUE(has(page, "&lt;i&gt;@example.org"));
  EXPECT_FALSE(has(page, "<script"));
  EXPECT_FALSE(has(page, "<i>"));
}

TEST_F(PagesTest, ShowNobodyElsesNotes) {
  world.service.accounts().save("eli@example.org", TestWorld::PASSWORD);
  ASSERT_EQ(statusOf(world.capture(world.accessToken(), "Dana's own")), 200);
  const auto cookie = logIn("eli@example.org", TestWorld::PASSWORD)->get_header_value("Set-Cookie");
  const auto page = notesPage({{"Cookie", cookie.substr(0, cookie.find(';'))}});
  EXPECT_TRUE(has(page, "No notes yet."));
}

TEST_F(PagesTest, SigningOutEndsTheSessionOnTheServiceToo) {
  const auto cookie = world.browserCookie();
  const auto answer = world.client().Post("/logout", cookie, "", "text/plain");
  expectSentTo("/login", answer);
  EXPECT_TRUE(has(answer->get_header_value("Set-Cookie"), "Max-Age=0"));
  expectSentTo("/login", world.client().Get("/case-notes", cookie));
}

TEST_F(PagesTest, ASessionEndsAfterTwelveHours) {
  const auto cookie = world.browserCookie();
  expectSentTo("/case-notes", world.client().Get("/login", cookie));
  world.clock.advance(Tokens::PAGE_LIFETIME);
  expectSentTo("/login", world.client().Get("/case-notes", cookie));
}

TEST_F(PagesTest, AnAccessTokenIsNoCookie) {
  const httplib::Headers cookie = {{"Cookie", "notewick_session=" + world.accessToken()}};
  expectSentTo("/login", world.client().Get("/case-notes", cookie));
}

}  // namespace
}  // namespace notewick::service
