#pragma once

#include <string>
#include <vector>

#include "model/records.h"

namespace notewick {

class Files;

/// The three lists live in memory and are mirrored, each to one JSON file in the support folder.
/// Every change rewrites the whole file in place; files are read at launch only. No failure is
/// reported: what cannot be read counts as empty, what cannot be written is tried again with the
/// next change. Only where the support folder has gone it is made, and the list saved, at once.
/// Main thread.

[[nodiscard]] std::string pendingFile();
[[nodiscard]] std::string outboxFile();
[[nodiscard]] std::string participantsCache();

/// Fills `list` from the file. A file that cannot be read leaves it as it was; one that cannot be
/// decoded empties it.
template <class Record>
void loadJSON(Files& files, const std::string& path, std::vector<Record>& list);

/// Replaces the file's contents by the list. The file stays as it is when the list cannot be
/// encoded.
template <class Record>
void saveJSON(Files& files, const std::string& path, const std::vector<Record>& list);

}  // namespace notewick
