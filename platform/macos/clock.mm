#include "platform/macos/clock.h"

#import <Foundation/Foundation.h>

namespace notewick {

std::chrono::duration<double> CocoaClock::now() const {
  return std::chrono::duration<double>(NSDate.timeIntervalSinceReferenceDate);
}

CivilTime CocoaClock::localTime(std::chrono::duration<double> time) const {
  // The system time zone is remembered after its first use.
  [NSTimeZone resetSystemTimeZone];
  NSCalendar* calendar = [NSCalendar calendarWithIdentifier:NSCalendarIdentifierGregorian];
  NSDateComponents* parts =
      [calendar componentsInTimeZone:NSTimeZone.systemTimeZone
                            fromDate:[NSDate dateWithTimeIntervalSinceReferenceDate:time.count()]];
  return {static_cast<int>(parts.year),   static_cast<int>(parts.month),
          static_cast<int>(parts.day),    static_cast<int>(parts.hour),
          static_cast<int>(parts.minute), static_cast<int>(parts.second)};
}

}  // namespace notewick
