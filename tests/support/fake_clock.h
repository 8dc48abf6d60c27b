#pragma once

#include "model/date.h"
#include "platform/clock.h"

namespace notewick {

/// The logical time of a test. It moves only when a test moves it, through `FakeMainLoop`, or sets
/// it here, which runs no timer: as when the user corrects the clock.
class FakeClock : public Clock {
 public:
  [[nodiscard]] Date now() const override { return now_; }
  [[nodiscard]] CivilTime localTime(Date time) const override;

  void set(Date now) { now_ = now; }
  /// Sets the time to what the wall clock shows in the zone of this moment.
  void setLocal(const CivilTime& time) { now_ = dateOf(time); }
  /// The user travels: from now on wall clocks are so many hours ahead of UTC.
  void setZone(double hoursAheadOfUtc) { offset_ = Date(hoursAheadOfUtc * 3600); }

  /// The point in time at which the wall clock shows `local` in the zone of this moment.
  [[nodiscard]] Date dateOf(const CivilTime& local) const;

 private:
  Date now_{0};
  Date offset_{0};
};

}  // namespace notewick
