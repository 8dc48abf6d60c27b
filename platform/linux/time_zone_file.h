#pragma once

namespace notewick {

/// Makes the C library read the time zone file that TZ names again if it changed since the last
/// call; without TZ the library sees to that itself. Main thread.
void rereadChangedTimeZoneFile();

}  // namespace notewick
