#pragma once

#include <optional>

#include "model/date.h"

namespace notewick {

/// Gives samples their moments. A timer fires some milliseconds late, never the same number twice,
/// so that four samples in a row would span a little more or a little less than three intervals by
/// the clock. Moments keep the beat instead: what is counted does not depend on how busy the
/// machine is. Main thread.
class SampleBeat {
 public:
  /// The moment of a sample that is taken when the clock reads `clock`. Within two seconds of a
  /// whole number (one or more) of `SAMPLE_INTERVAL` after the previous moment it is exactly that.
  /// Otherwise, as after sleep, a stall or a change of the clock, it is the clock itself, and the
  /// beat starts anew there.
  Date momentOf(Date clock);

 private:
  std::optional<Date> previous_;
};

}  // namespace notewick
