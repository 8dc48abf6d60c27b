#pragma once

#include <string>

namespace notewick {

/// Files that are appended to. Every failure is swallowed: what cannot be written is lost. Main
/// thread.

/// Creates the support folder.
void ensureDirs();

/// Appends `line` and a line feed to the file at `path`; a missing file is made of that line. The
/// folder is not created.
void appendLine(const std::string& line, const std::string& path);

/// Appends an entry, stamped with the local time, to the watch log: the diary of what the detector
/// saw. A log of more than 500,000 bytes is deleted first.
void watchLog(const std::string& message);

}  // namespace notewick
