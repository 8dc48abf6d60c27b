#include "detect/sample_beat.h"

#include <gtest/gtest.h>

#include <random>

#include "detect/work_session.h"

namespace notewick {
namespace {

constexpr Date START(736'000'000.25);

/// The moment of a sample so many seconds after the first one, which is taken at `START`.
double momentAfter(double seconds) {
  SampleBeat beat;
  EXPECT_EQ(beat.momentOf(START), START);
  return (beat.momentOf(START + Date(seconds)) - START).count();
}

TEST(SampleBeat, ASampleWithinTwoSecondsOfWholeIntervalsKeepsTheBeat) {
  for (const auto& [seconds, moment] : {std::pair(13.0, 15.0), {17.0, 15.0}, {3599.5, 3600.0}})
    EXPECT_EQ(momentAfter(seconds), moment);
}

TEST(SampleBeat, AnyOtherJumpStartsANewBeat) {
  for (const double seconds : {12.75, 17.25, 3607.0, 0.5, 0.0, -1.0, -15.0})
    EXPECT_EQ(momentAfter(seconds), seconds);
}

TEST(SampleBeat, TheNewBeatCountsFromThere) {
  SampleBeat beat;
  beat.momentOf(START);
  const Date woken = beat.momentOf(START + Date(1000));
  EXPECT_EQ(beat.momentOf(woken + Date(15.25)), woken + Date(15));
}

// --- What the rule is for ------------------------------------------------------------------------

/// Samples by a timer that keeps its phase and fires up to 400 ms late, from a random time of day.
class JitteryDay {
 public:
  explicit JitteryDay(std::mt19937& random)
      : random_(random),
        due_(START + Date(std::uniform_real_distribution(0.0, 86'400.0)(random))) {}

  /// The moments of the next samples, so many.
  std::vector<Date> samples(int count) {
    std::vector<Date> moments;
    for (; count > 0; --count) {
      due_ += Date(15);
      moments.push_back(beat_.momentOf(due_ + Date(lateness_(random_))));
    }
    return moments;
  }

 private:
  std::mt19937& random_;
  std::uniform_real_distribution<double> lateness_{0.0, 0.4};
  Date due_;
  SampleBeat beat_;
};

WorkSession sessionAt(const std::vector<Date>& moments) {
  WorkSession session("Lena O'Keefe", moments.front());
  for (std::size_t sample = 1; sample < moments.size(); ++sample)
    session.addSighting(moments[sample]);
  return session;
}

TEST(SampleBeat, WhatCountsDoesNotDependOnHowLateTimersFire) {
  std::mt19937 random(20'010'101);
  for (int day = 0; day < 2000; ++day) {
    JitteryDay samples(random);
    ASSERT_FALSE(sessionAt(samples.samples(3)).countsAsWork()) << "day " << day;
    const WorkSession session = sessionAt(samples.samples(4));
    ASSERT_TRUE(session.countsAsWork()) << "day " << day;
    const auto absence = samples.samples(41);
    ASSERT_FALSE(session.hasEnded(absence[39])) << "day " << day << ", after ten minutes";
    ASSERT_TRUE(session.hasEnded(absence[40])) << "day " << day << ", one sample later";
  }
}

}  // namespace
}  // namespace notewick
