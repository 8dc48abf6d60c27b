#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notewick {

/// Local files. Synchronous, main thread. Paths are absolute UTF-8. A failure is reported by the
/// result and leaves what was there; nothing is logged. Files are created for their owner only
/// (0600): they name clients. `replaceInPlace` and `append`, which write into files that may be
/// older, take the rights of group and others from the file and from its folder.
class Files {
 public:
  virtual ~Files() = default;

  /// The user's home folder, without a trailing slash.
  [[nodiscard]] virtual std::string homeFolder() const = 0;

  /// Creates a folder with the missing folders above it, for the owner only (0700). An existing
  /// folder is success.
  virtual bool createFolders(const std::string& path) = 0;

  /// Whether there is a folder of this name, or a link to one.
  [[nodiscard]] virtual bool isFolder(const std::string& path) = 0;

  /// Takes the rights of group and others from a folder and from the files in it. Folders below
  /// it stay as they are, and so does what links point to.
  virtual void keepPrivate(const std::string& folder) = 0;

  /// The whole contents; absent when the file does not exist, cannot be read, or is larger than 64
  /// MiB, which is found out without reading it.
  [[nodiscard]] virtual std::optional<std::string> read(const std::string& path) = 0;

  /// The size in bytes; absent when there is no such file or it cannot be asked for.
  [[nodiscard]] virtual std::optional<std::uint64_t> size(const std::string& path) = 0;

  /// Replaces the contents in place, without a temporary file: space is reserved first, one write
  /// call puts down `text` followed by blanks up to the old length, then the file is cut to
  /// `text`'s length. A process killed on the way leaves the old or the new text, either possibly
  /// followed by blanks, as far as the system and the file system allow (docs/files.md). When the
  /// space cannot be had, or the text is larger than what `read` reads, the file stays as it was.
  /// After success the text is on the disk.
  virtual bool replaceInPlace(const std::string& path, std::string_view text) = 0;

  /// Writes a temporary file beside `path` and moves it into place.
  virtual bool replaceAtomically(const std::string& path, std::string_view text) = 0;

  /// Appends to an existing file. False, with nothing created, when it cannot be opened.
  virtual bool append(const std::string& path, std::string_view text) = 0;

  /// Deletes a file.
  virtual bool remove(const std::string& path) = 0;
};

}  // namespace notewick
