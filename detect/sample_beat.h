#pragma once

#include <optional>

#include "model/date.h"

namespace notewick {

/// Gives samples their moments. A timer fires some milliseconds late, never by the same amount, so
/// four samples in a row span a little more or a little less than three intervals by the clock.
/// Moments keep the beat instead, and what counts as work does not depend on how busy the machine
/// is. Main thread.
class SampleBeat {
 public:
  /// The moment of a sample that is taken when the clock reads `clock`. If the clock is within two
  /// seconds of a whole number (one or more) of `SAMPLE_INTERVAL` after the previous moment, the
  /// moment is exactly there. Otherwise the machine slept or stalled, or somebody set the clock:
  /// the moment is what the clock reads, and the beat starts anew there.
  Date momentOf(Date clock);

 private:
  std::optional<Date> previous_;
};

}  // namespace notewick
