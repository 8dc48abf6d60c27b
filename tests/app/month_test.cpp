#include <gmock/gmock.h>

#include <map>
#include <random>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

constexpr unsigned SEED = 20240502;
constexpr int DAYS = 31;
constexpr int HOURS_OF_WORK = 9;

/// A month of a caseworker with a bad network, a laptop that sleeps, and a program that is killed
/// now and then. The same in every run.
class Month : public WorldTest {
 protected:
  Month() { runsKnowing({"Tobias Hargreave", "Lena O'Keefe", "Zoe Abel", "Samuel Ito"}); }

  void passesADay() {
    for (int hour = 0; hour < HOURS_OF_WORK; ++hour) {
      somethingHappens();
      worksForAnHour();
    }
    goesHome();
  }

  /// Once in a while: an outage and its end, an expired sign-in, sleep, a restart, a kill.
  void somethingHappens() {
    switch (random_() % 10) {
      case 0:
        return service.isUnreachable("offline");
      case 1:
        return service.answers(503);
      case 2:
        return service.backend.revokeTokens();
      case 3:
        return clock.jump(random_() % 2 == 0 ? 600 : 3600);
      case 4:
        return restart();
      case 5:
        ++kills_;
        kill();
        return launch();
      default:
        service.recovers();
    }
  }

  void worksForAnHour() {
    for (int quarter = 0; quarter < 4; ++quarter) {
      const auto& person = service.backend.participants[random_() % 4];
      const auto title = person.name() + " " + std::to_string(random_() % 5);
      sees({title}, static_cast<int>(random_() % 20));
      looksElsewhere(static_cast<int>(40 + random_() % 10));
      if (random_() % 2 == 0) writesANote();
    }
  }

  void writesANote() {
    if (app().participants.empty()) return;
    const auto note = "Note " + std::to_string(++written_);
    app().enqueueNote(app().participants[random_() % 4], note, 15, "2024-05-02");
    loop.runPosted();
  }

  /// In the evening everything works again: what waits is sent, what was caught is skipped.
  void goesHome() {
    service.recovers();
    samples(8);
    if (views.signIn != nullptr && views.signIn->visible) signInWithPanel();
    samples(8);
    EXPECT_THAT(app().outbox, IsEmpty());
    EXPECT_THAT(app().sendingIds, IsEmpty());
    while (!app().pendings.empty()) app().removePending(app().pendings.front().id);
    looksElsewhere(41);
    EXPECT_THAT(app().sessions, IsEmpty());
    EXPECT_THAT(loop.runningTimers(), ElementsAre(15, 60));
    EXPECT_THAT(text("watch.log").size(), Le(500'000u + 1'000u));
    forgetThePast();
    clock.jump(14 * 3600);
  }

  std::mt19937 random_{SEED};
  int written_ = 0;
  int kills_ = 0;
};

TEST_F(Month, LosesNoNoteAndLeavesNothingBehind) {
  for (int day = 0; day < DAYS; ++day) {
    passesADay();
    ASSERT_FALSE(HasFailure()) << "day " << day;
  }
  std::map<std::string, int> arrived;
  for (const auto& note : service.backend.notes) ++arrived[note.at("input")];
  EXPECT_GT(written_, 300);
  EXPECT_GT(kills_, 10);
  EXPECT_THAT(arrived, SizeIs(written_));
  EXPECT_THAT(service.backend.notes, SizeIs(Le(written_ + kills_)));
}

}  // namespace
}  // namespace notewick
