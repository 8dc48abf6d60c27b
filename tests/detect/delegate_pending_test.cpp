#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "model/json_text.h"
#include "model/local_store.h"
#include "model/record_json.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PromotionTest : public WorldTest {
 protected:
  PromotionTest() {
    signIn();
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    launch();
    notifier.shown.clear();
  }

  /// A session that ended now, of so many sightings.
  void promotes(const std::string& participant, int sightings = 4) {
    WorkSession session(participant, clock.now() - Date(700));
    session.lastSeen = clock.now() - Date(610);
    session.sightings = sightings;
    session.evidence = {"Inbox"};
    app().addPending(session);
  }

  [[nodiscard]] std::vector<Pending> stored() const {
    return decodeRecords<Pending>(text("pending.json")).value();
  }
};

TEST_F(PromotionTest, SavesThePendingAndShowsItInMenuAndWidget) {
  promotes("Lena O'Keefe", 5);
  ASSERT_THAT(stored(), SizeIs(1));
  EXPECT_EQ(stored().front().id, FakeUuidSource::nth(1));
  EXPECT_EQ(stored().front().observedMinutes, 2);
  EXPECT_NE(statusItem().find("Log: Lena O'Keefe (~2 min, 2024-05-02)"), nullptr);
  EXPECT_EQ(statusItem().title, " VELK (1)");
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Lena O'Keefe · ~2m · 2024-05-02"));
}

TEST_F(PromotionTest, SavesThenShowsThenTells) {
  deeds.clear();
  promotes("Lena O'Keefe");
  EXPECT_THAT(newDeeds(), ElementsAre("replace pending.json", "menu", "widget",
                                      "notify Log it? — Lena O'Keefe"));
  app().removePending(FakeUuidSource::nth(1));
  EXPECT_THAT(newDeeds(), ElementsAre("replace pending.json", "menu", "widget"));
}

TEST_F(PromotionTest, AsksTheUserToConfirmIt) {
  promotes("Lena O'Keefe", 5);
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"Log it? — Lena O'Keefe",
                                       "Looks like you worked on Lena O'Keefe (~2 min on screen). "
                                       "Confirm it in the floating widget."}));
}

TEST_F(PromotionTest, ASecondSessionOfTheDayIsAddedToTheFirst) {
  promotes("Lena O'Keefe", 4);
  advance(3600);
  promotes("Lena O'Keefe", 9);
  ASSERT_THAT(stored(), SizeIs(1));
  EXPECT_EQ(stored().front().observedMinutes, 4);
  EXPECT_EQ(stored().front().lastSeen, clock.now() - Date(610));
}

TEST_F(PromotionTest, TheNotificationTellsTheMinutesOfThisSessionOnly) {
  promotes("Lena O'Keefe", 40);
  promotes("Lena O'Keefe", 4);
  EXPECT_THAT(notifier.shown.back().body, testing::HasSubstr("(~1 min on screen)"));
}

TEST_F(PromotionTest, ADayIsTheLocalDayOfThePromotion) {
  promotes("Lena O'Keefe");
  clock.setLocal({2024, 5, 3, 0, 0, 5});
  promotes("Lena O'Keefe");
  ASSERT_THAT(stored(), SizeIs(2));
  EXPECT_EQ(stored()[0].day, "2024-05-02");
  EXPECT_EQ(stored()[1].day, "2024-05-03");
}

TEST_F(PromotionTest, PendingsOfEarlierDaysStayUntouched) {
  promotes("Lena O'Keefe");
  advance(3 * 86400);
  restart();
  ASSERT_THAT(app().pendings, SizeIs(1));
  EXPECT_EQ(app().pendings.front().day, "2024-05-02");
  EXPECT_EQ(app().pendings.front().observedMinutes, 1);
}

TEST_F(PromotionTest, DoesNotBringTheWidgetForward) {
  statusItem().choose("Hide floating widget");
  promotes("Lena O'Keefe");
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(widget().rowTexts(), SizeIs(1));
}

TEST_F(PromotionTest, WorksWithoutAWidget) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  promotes("Lena O'Keefe");
  EXPECT_EQ(views.quickNote, nullptr);
  EXPECT_THAT(stored(), SizeIs(1));
}

TEST_F(PromotionTest, AFailedSaveLeavesTheListInMemoryRight) {
  files.failWrites = true;
  promotes("Lena O'Keefe");
  files.failWrites = false;
  EXPECT_FALSE(files.contents(pendingFile()));
  promotes("Tobias Hargreave");
  EXPECT_THAT(stored(), SizeIs(2));
}

TEST_F(PromotionTest, ARemovedPendingLeavesFileMenuAndWidget) {
  promotes("Lena O'Keefe");
  promotes("Tobias Hargreave");
  app().removePending(FakeUuidSource::nth(1));
  ASSERT_THAT(stored(), SizeIs(1));
  EXPECT_EQ(stored().front().participant, "Tobias Hargreave");
  EXPECT_EQ(statusItem().title, " VELK (1)");
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Tobias Hargreave · ~1m · 2024-05-02"));
}

TEST_F(PromotionTest, RemovingTheLastPendingLeavesAnEmptyArray) {
  promotes("Lena O'Keefe");
  app().removePending(FakeUuidSource::nth(1));
  EXPECT_EQ(parseJson(text("pending.json")), nlohmann::json::array());
  EXPECT_NE(statusItem().find("No unlogged work spotted"), nullptr);
}

TEST_F(PromotionTest, RemovingTakesEveryPendingOfThatIdAndKeepsTheOrder) {
  const auto pending = [](const char* id, const char* name) {
    return Pending{id, name, "2024-05-02", Date(0), Date(60), 1, {}};
  };
  app().pendings = {pending("A", "1"), pending("B", "2"), pending("A", "3"), pending("C", "4")};
  app().removePending("A");
  ASSERT_THAT(app().pendings, SizeIs(2));
  EXPECT_EQ(app().pendings[0].participant, "2");
  EXPECT_EQ(app().pendings[1].participant, "4");
}

TEST_F(PromotionTest, RemovingAnUnknownIdStillRewritesAndRefreshes) {
  promotes("Lena O'Keefe");
  const auto writes = files.writesTo(pendingFile());
  const auto menus = statusItem().menusSet;
  const auto fits = widget().fits;
  app().removePending("unknown");
  EXPECT_EQ(files.writesTo(pendingFile()), writes + 1);
  EXPECT_EQ(statusItem().menusSet, menus + 1);
  EXPECT_EQ(widget().fits, fits + 1);
  EXPECT_THAT(stored(), SizeIs(1));
}

TEST_F(PromotionTest, RemovingSaysNothing) {
  promotes("Lena O'Keefe");
  notifier.shown.clear();
  app().removePending(FakeUuidSource::nth(1));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

}  // namespace
}  // namespace notewick
