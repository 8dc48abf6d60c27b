#include "detect/notification.h"

#include <gmock/gmock.h>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;

TEST(NotificationScript, ShowsBodyAndTitleWithASound) {
  EXPECT_EQ(notificationScript("Log it? — Lena", "Confirm it."),
            R"(display notification "Confirm it." with title "Log it? — Lena" sound name "Glass")");
}

TEST(NotificationScript, EscapesQuotesAndBackslashes) {
  EXPECT_EQ(notificationScript(R"(a "b")", R"(c:\d)"),
            R"(display notification "c:\\d" with title "a \"b\"" sound name "Glass")");
}

TEST(NotificationScript, ABackslashAtTheEndLeavesItsLiteralClosed) {
  EXPECT_EQ(notificationScript("t\\", "b\\"),
            R"(display notification "b\\" with title "t\\" sound name "Glass")");
  EXPECT_EQ(notificationScript("", R"(\")"),
            R"(display notification "\\\"" with title "" sound name "Glass")");
}

TEST(NotificationScript, IsRunByTheScriptInterpreter) {
  const Command command = notificationCommand("Title", "Body");
  EXPECT_EQ(command.executable, "/usr/bin/osascript");
  EXPECT_THAT(command.arguments, ElementsAre("-e", notificationScript("Title", "Body")));
}

using NotifyTest = WorldTest;

TEST_F(NotifyTest, ShowsTheTextsAsTheyStand) {
  notify("a <b> & \"c\"", "d\ne \\");
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"a <b> & \"c\"", "d\ne \\"}));
}

TEST_F(NotifyTest, ShowsATitleOf200CharactersAndABodyOf2000Whole) {
  const Notification longest = {std::string(200, 't'), std::string(2000, 'b')};
  notify(longest.title, longest.body);
  EXPECT_THAT(notifier.shown, ElementsAre(longest));
}

TEST_F(NotifyTest, CutsWhatIsLonger) {
  notify(std::string(201, 't'), std::string(2001, 'b'));
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{std::string(200, 't') + "…", std::string(2000, 'b') + "…"}));
}

TEST_F(NotifyTest, HandsTheDesktopNoMegabytes) {
  const std::string tower = "e" + std::string(8'000'000, '\xCC');
  std::string marks = "e";
  while (marks.size() < 8'000'000) marks += "\u0301";
  for (const auto& huge : {std::string(8'000'000, '<'), marks, tower}) {
    notify(huge, huge);
    EXPECT_LE(notifier.shown.back().title.size(), 2 * 1024 + 3u);
    EXPECT_LE(notifier.shown.back().body.size(), 16 * 1024 + 3u);
  }
}

}  // namespace
}  // namespace notewick
