#pragma once

#include <string>

namespace notewick {

/// Text files that grow line by line. Failures are swallowed: a line that cannot be written is
/// lost. Main thread.

/// Creates the support folder. One that exists is left to its owner, with the files in it.
void ensureDirs();

/// Appends `line` and a line feed to the file at `path`, which is created if it is missing. Its
/// folder is not created.
void appendLine(const std::string& line, const std::string& path);

/// Appends an entry, stamped with the local time, to the watch log, the diary of what the detector
/// saw. A log of more than 500,000 bytes is deleted before.
void watchLog(const std::string& message);

}  // namespace notewick
