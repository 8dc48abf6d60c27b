#include "tools/local-service/html.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace notewick::service {
namespace {

TEST(HtmlTest, EscapesWhatMarkupIsMadeOf) {
  EXPECT_EQ(escaped(R"(<a href="x" title='y'>&amp;)"),
            "&lt;a href=&quot;x&quot; title=&#39;y&#39;&gt;&amp;amp;");
}

TEST(HtmlTest, LeavesOtherTextAndLineBreaksAsTheyAre) {
  EXPECT_EQ(escaped("Zoë Nguyễn – 🙂\n\tnext"), "Zoë Nguyễn – 🙂\n\tnext");
}

TEST(HtmlTest, ReplacesControlCharacters) {
  EXPECT_EQ(escaped(std::string_view("a\0b\x1b\x7f", 5)), "a\uFFFDb\uFFFD\uFFFD");
}

TEST(HtmlTest, APageRunsNothingAndIsNotKept) {
  const auto page = htmlPage(401, "A < B", "<p>content</p>");
  EXPECT_EQ(page.status, 401);
  EXPECT_EQ(page.contentType, "text/html; charset=utf-8");
  EXPECT_NE(page.body.find("<title>A &lt; B – VELK</title>"), std::string::npos);
  EXPECT_NE(page.body.find("<p>content</p>"), std::string::npos);
  const auto header = [&](const std::string& name) {
    const auto found = std::ranges::find(page.headers, name, [](const auto& h) { return h.first; });
    return found == page.headers.end() ? "" : found->second;
  };
  EXPECT_TRUE(header("Content-Security-Policy").starts_with("default-src 'none';"));
  EXPECT_EQ(header("Cache-Control"), "no-store");
  EXPECT_EQ(header("X-Content-Type-Options"), "nosniff");
}

TEST(HtmlTest, SpellsDatesOut) {
  EXPECT_EQ(readableDate("2026-03-05"), "5 March 2026");
  EXPECT_EQ(readableDate("2026-12-31"), "31 December 2026");
  EXPECT_EQ(readableDate("2026-13-01"), "2026-13-01");
  EXPECT_EQ(readableDate("soon"), "soon");
}

TEST(HtmlTest, SpellsInstantsOutInTheMachinesTimeZone) {
  setenv("TZ", "EAST-2", 1);  // two hours ahead of UTC
  tzset();
  EXPECT_EQ(readableTime(Time(std::chrono::seconds(1'770'000'000))), "2 February 2026, 04:40");
  unsetenv("TZ");
  tzset();
}

}  // namespace
}  // namespace notewick::service
