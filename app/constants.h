#pragma once

#include <string>
#include <string_view>

namespace notewick {

/// The program-wide constants, one definition each.

/// The service's origin, where the user default "VELKBaseURL" names no other.
inline constexpr std::string_view DEFAULT_BASE_URL = "https://velk.example";

/// The folder of all local files, below the user's home folder; set once by `setConstants`.
extern std::string SUPPORT_DIR;

/// Names the refresh token in the system's secret store.
inline constexpr std::string_view KEYCHAIN_SERVICE = "tools.velk.notewick";
inline constexpr std::string_view KEYCHAIN_ACCOUNT = "refresh-token";

/// How the program names itself to the service, on every system.
inline constexpr std::string_view USER_AGENT = "velk-notewick/1.0 (macOS)";

/// Seconds between two looks at the screen; also the seconds of work credited for each sighting.
inline constexpr double SAMPLE_INTERVAL = 15.0;

/// A work session ends when its participant has not been seen for more than these seconds.
inline constexpr double SESSION_GAP = 600.0;

/// An ended session becomes a pending item from this many sightings on, and with at least these
/// seconds between the first and the last of them.
inline constexpr int MIN_SIGHTINGS = 3;
inline constexpr double MIN_SPAN = 45.0;

/// Seconds between two tries to upload what waits in the outbox.
inline constexpr double OUTBOX_RETRY_INTERVAL = 60.0;

/// The path of the watch log; set once by `setConstants`.
extern std::string WATCH_LOG;

/// Sets the constants that depend on the user's home folder, an absolute path kept as it stands.
/// Called once, at the process entry, before anything else runs.
void setConstants(const std::string& homeFolder);

}  // namespace notewick
