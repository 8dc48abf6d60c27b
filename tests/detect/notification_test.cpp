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

TEST(NotificationScript, EscapesQuotesAndBackslashesAlsoAtTheEnd) {
  EXPECT_EQ(notificationScript(R"(a "b" \)", R"(c:\"d\)"),
            R"(display notification "c:\\\"d\\" with title "a \"b\" \\" sound name "Glass")");
}

TEST(NotificationScript, IsRunByTheScriptInterpreter) {
  const Command command = notificationCommand("Title", "Body");
  EXPECT_EQ(command.executable, "/usr/bin/osascript");
  EXPECT_THAT(command.arguments, ElementsAre("-e", notificationScript("Title", "Body")));
}

class NotifyTest : public WorldTest {
 protected:
  static std::string repeated(const std::string& part, int count) {
    std::string text;
    for (; count > 0; --count) text += part;
    return text;
  }

  const std::string sixteenBytes = "\u00e9" + repeated("\u0301", 7);  ///< one character
};

TEST_F(NotifyTest, ShowsTheTextsAsTheyStand) {
  notify("a <b> & \"c\"", "d\ne \\", nullptr);
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"a <b> & \"c\"", "d\ne \\"}));
}

TEST_F(NotifyTest, ShowsSoManyCharactersAndBytesAndCutsTheRest) {
  struct Longest {
    std::string character;
    int inTitle;
    int inBody;
  };
  for (const auto& [character, inTitle, inBody] :
       {Longest{"t", 200, 2000}, Longest{sixteenBytes, 128, 1024}}) {
    const Notification whole = {repeated(character, inTitle), repeated(character, inBody)};
    notifier.shown.clear();
    notify(whole.title, whole.body, nullptr);
    notify(whole.title + character, whole.body + character, nullptr);
    EXPECT_THAT(notifier.shown,
                ElementsAre(whole, Notification{whole.title + "…", whole.body + "…"}));
  }
}

}  // namespace
}  // namespace notewick
