#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "doctor/finding.h"

namespace notewick {

/// What the checks of the program's own files say. Pure functions over what was seen.

struct ListFacts {
  bool exists;
  std::optional<std::size_t> count;  ///< absent when the file is no list
};
[[nodiscard]] Finding aboutParticipants(const ListFacts& list);
[[nodiscard]] Finding aboutCaughtWork(const ListFacts& list);
[[nodiscard]] Finding aboutNotes(const ListFacts& list);

struct FileFacts {
  std::string name;
  std::uint64_t bytes;
  unsigned rights;  ///< the nine permission bits
};
/// The files by name, with the days' logs of captures as one; of files that are not the program's,
/// only their number, for the user may have given them telling names. `folderRights` is absent when
/// there is no folder yet.
[[nodiscard]] Finding aboutFiles(std::optional<unsigned> folderRights,
                                 const std::vector<FileFacts>& files);

/// `entry` is the text of the desktop entry that starts the program; absent when there is none. An
/// entry may say itself that it is switched off, as the settings of desktops write it
/// (freedesktop.org, Desktop Application Autostart).
[[nodiscard]] Finding aboutStartAtLogin(const std::optional<std::string>& entry);

}  // namespace notewick
