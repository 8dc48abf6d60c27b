#include "detect/sample_beat.h"

#include <cmath>

#include "app/constants.h"

namespace notewick {
namespace {

constexpr Date INTERVAL(SAMPLE_INTERVAL);
constexpr Date TOLERANCE(2.0);

Date onTheBeat(Date previous, Date clock) {
  const double intervals = std::round((clock - previous) / INTERVAL);
  const Date beat = previous + intervals * INTERVAL;
  const bool keepsIt = intervals >= 1 && clock - beat <= TOLERANCE && beat - clock <= TOLERANCE;
  return keepsIt ? beat : clock;
}

}  // namespace

Date SampleBeat::momentOf(Date clock) {
  previous_ = previous_ ? onTheBeat(*previous_, clock) : clock;
  return *previous_;
}

}  // namespace notewick
