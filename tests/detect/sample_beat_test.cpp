#include "detect/sample_beat.h"

#include <gtest/gtest.h>

#include <iostream>
#include <random>

#include "app/constants.h"
#include "detect/work_session.h"

namespace notewick {
namespace {

constexpr Date START(736'000'000.25);

TEST(SampleBeatTest, TheFirstMomentIsTheClock) {
  EXPECT_EQ(SampleBeat().momentOf(START), START);
}

/// The moment of a sample so many seconds after the first one.
Date momentAfter(double seconds) {
  SampleBeat beat;
  beat.momentOf(START);
  return beat.momentOf(START + Date(seconds)) - START;
}

TEST(SampleBeatTest, ALateOrEarlySampleKeepsTheBeat) {
  EXPECT_EQ(momentAfter(15.004), Date(15));
  EXPECT_EQ(momentAfter(14.996), Date(15));
  EXPECT_EQ(momentAfter(17.0), Date(15));
  EXPECT_EQ(momentAfter(13.0), Date(15));
}

TEST(SampleBeatTest, AJumpOfWholeIntervalsKeepsTheBeat) {
  EXPECT_EQ(momentAfter(30.3), Date(30));
  EXPECT_EQ(momentAfter(3599.5), Date(3600));
}

TEST(SampleBeatTest, AnyOtherJumpStartsANewBeat) {
  for (const double jump : {17.25, 12.75, 22.5, 3607.0}) EXPECT_EQ(momentAfter(jump), Date(jump));
}

TEST(SampleBeatTest, AClockThatWasSetBackStartsANewBeat) {
  for (const double jump : {-3600.0, -15.0, -1.0, 0.0, 0.5}) {
    EXPECT_EQ(momentAfter(jump), Date(jump));
  }
}

TEST(SampleBeatTest, TheNewBeatCountsFromThere) {
  SampleBeat beat;
  beat.momentOf(START);
  const Date woken = beat.momentOf(START + Date(1000.0));
  EXPECT_EQ(beat.momentOf(woken + Date(15.25)), woken + Date(15));
}

TEST(SampleBeatTest, LatenessDoesNotAddUp) {
  SampleBeat beat;
  Date moment = beat.momentOf(START);
  for (int sample = 1; sample <= 4000; ++sample) {
    moment = beat.momentOf(START + Date(sample * SAMPLE_INTERVAL + 0.4));
  }
  EXPECT_EQ(moment, START + Date(4000 * SAMPLE_INTERVAL));
}

// --- What the rule is for ------------------------------------------------------------------------

/// Samples by a timer that keeps its phase and fires up to 400 ms late, at a random time of day.
class JitteryDay {
 public:
  explicit JitteryDay(std::mt19937& random) : random_(random) {
    due_ = START + Date(std::uniform_real_distribution(0.0, 86'400.0)(random_));
  }

  /// The moments of the next samples, so many.
  std::vector<Date> samples(int count) {
    std::vector<Date> moments;
    for (int sample = 0; sample < count; ++sample) {
      due_ += Date(SAMPLE_INTERVAL);
      moments.push_back(beat_.momentOf(due_ + Date(lateness_(random_))));
    }
    return moments;
  }

  /// The machine sleeps or stalls; the timer goes on in its phase by the clock, or in another.
  void jump(double seconds) { due_ += Date(seconds); }

 private:
  std::mt19937& random_;
  std::uniform_real_distribution<double> lateness_{0.0, 0.4};
  Date due_{0};
  SampleBeat beat_;
};

WorkSession seenAt(const std::vector<Date>& moments) {
  WorkSession session("Lena O'Keefe", moments.front());
  for (std::size_t sample = 1; sample < moments.size(); ++sample) {
    session.addSighting(moments[sample]);
  }
  return session;
}

class JitteryDaysTest : public testing::Test {
 protected:
  static constexpr unsigned SEED = 20'010'101;
  static constexpr int SEQUENCES = 10'000;

  JitteryDaysTest() { std::cout << SEQUENCES << " sequences from the seed " << SEED << "\n"; }

  int anyCount(int least, int most) { return std::uniform_int_distribution(least, most)(random); }

  std::mt19937 random{SEED};
};

TEST_F(JitteryDaysTest, FourSamplesInARowAlwaysCountAndThreeNever) {
  for (int sequence = 0; sequence < SEQUENCES; ++sequence) {
    JitteryDay day(random);
    day.samples(anyCount(0, 20));
    ASSERT_TRUE(seenAt(day.samples(4)).countsAsWork()) << "sequence " << sequence;
    day.samples(anyCount(1, 20));
    ASSERT_FALSE(seenAt(day.samples(3)).countsAsWork()) << "sequence " << sequence;
  }
}

TEST_F(JitteryDaysTest, AnAbsenceOfTenMinutesAlwaysContinuesAndOneSampleMoreNever) {
  for (int sequence = 0; sequence < SEQUENCES; ++sequence) {
    JitteryDay day(random);
    const WorkSession session = seenAt(day.samples(anyCount(1, 20)));
    const auto absence = day.samples(41);
    ASSERT_FALSE(session.hasEnded(absence[39])) << "sequence " << sequence;
    ASSERT_TRUE(session.hasEnded(absence[40])) << "sequence " << sequence;
  }
}

TEST_F(JitteryDaysTest, AJumpKeepsTheBeatExactlyWhenItIsOfWholeIntervals) {
  std::uniform_real_distribution<double> beside(2.5, 12.5);
  for (int sequence = 0; sequence < SEQUENCES; ++sequence) {
    JitteryDay day(random);
    const Date before = day.samples(anyCount(1, 20)).back();
    const int missed = anyCount(0, 240);
    day.jump(missed * SAMPLE_INTERVAL);
    const Date kept = day.samples(1).front();
    ASSERT_EQ(kept, before + Date((missed + 1) * SAMPLE_INTERVAL)) << "sequence " << sequence;
    const double jump = beside(random);
    day.jump(missed * SAMPLE_INTERVAL + jump);
    const double offBeat = std::remainder((day.samples(1).front() - kept).count(), SAMPLE_INTERVAL);
    ASSERT_GT(std::abs(offBeat), 1.0) << "sequence " << sequence << ", a jump of " << jump;
  }
}

}  // namespace
}  // namespace notewick
