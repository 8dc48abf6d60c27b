#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "model/record_json.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class PromotionTest : public WorldTest {
 protected:
  PromotionTest() { runsKnowing({"Tobias Hargreave", "Lena O'Keefe"}); }

  /// A session of so many sightings has ended.
  void promotes(const std::string& participant, int sightings = 4) {
    WorkSession session(participant, clock.now() - Date(700));
    session.sightings = sightings;
    app().addPending(session);
  }

  /// The participants of the pendings in the file.
  [[nodiscard]] std::vector<std::string> stored() const {
    const auto pendings = decodeRecords<Pending>(text("pending.json")).value();
    std::vector<std::string> names;
    for (const auto& pending : pendings) names.push_back(pending.participant);
    return names;
  }
};

TEST_F(PromotionTest, SavesThenShowsThenNotifies) {
  promotes("Lena O'Keefe", 5);
  EXPECT_THAT(takeTrace(), ElementsAre("replace pending.json", "menu", "widget",
                                       "notify Log it? — Lena O'Keefe"));
  EXPECT_THAT(stored(), ElementsAre("Lena O'Keefe"));
  EXPECT_NE(statusItem().find("Log: Lena O'Keefe (~2 min, 2024-05-02)"), nullptr);
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Lena O'Keefe · ~2m · 2024-05-02"));
}

TEST_F(PromotionTest, AsksTheUserToConfirmTheMinutesOfThisSession) {
  promotes("Lena O'Keefe", 40);
  promotes("Lena O'Keefe", 5);
  EXPECT_EQ(app().pendings.front().observedMinutes, 12);
  EXPECT_EQ(notifier.shown.back(), caught("Lena O'Keefe", 2));
}

TEST_F(PromotionTest, DoesNotBringTheWidgetForward) {
  statusItem().choose("Hide floating widget");
  promotes("Lena O'Keefe");
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(widget().rowTexts(), SizeIs(1));
}

TEST_F(PromotionTest, RemovingTakesEveryPendingOfThatIdIfAnyAndSavesAndShows) {
  const auto pending = [](const char* id, const char* name) {
    return Pending{id, name, "2024-05-02", Date(0), Date(60), 1, {}};
  };
  app().pendings = {pending("A", "1"), pending("B", "2"), pending("A", "3"), pending("C", "4")};
  for (const auto* const id : {"A", "unknown"}) {
    app().removePending(id);
    EXPECT_THAT(takeTrace(), ElementsAre("replace pending.json", "menu", "widget"));
    EXPECT_THAT(stored(), ElementsAre("2", "4"));
    EXPECT_THAT(widget().rowTexts(), SizeIs(2));
  }
}

}  // namespace
}  // namespace notewick
