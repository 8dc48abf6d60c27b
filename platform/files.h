#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notewick {

/// Local files. Synchronous, main thread. Paths are absolute UTF-8. A failure is reported by the
/// result and leaves what was there; nothing is logged. Files are created for their owner only
/// (0600): they name clients.
class Files {
 public:
  virtual ~Files() = default;

  /// The user's home folder, without a trailing slash.
  [[nodiscard]] virtual std::string homeFolder() const = 0;

  /// Creates a folder with the missing folders above it, for the owner only (0700). An existing
  /// folder is success.
  virtual bool createFolders(const std::string& path) = 0;

  /// The whole contents; absent when the file does not exist or cannot be read.
  [[nodiscard]] virtual std::optional<std::string> read(const std::string& path) = 0;

  /// The size in bytes; absent when there is no such file or it cannot be asked for.
  [[nodiscard]] virtual std::optional<std::uint64_t> size(const std::string& path) = 0;

  /// Replaces the contents in place, without a temporary file: space is reserved first, one write
  /// call puts down `text` followed by blanks up to the old length, then the file is cut to
  /// `text`'s length. A process killed on the way leaves the old or the new text, either possibly
  /// followed by blanks, when both fit one page of memory (4096 bytes). Of longer texts it may
  /// leave the first pages of the new one and then the old one, because a system takes over a write
  /// page by page. When the space cannot be had the file stays as it was.
  virtual bool replaceInPlace(const std::string& path, std::string_view text) = 0;

  /// Writes a temporary file beside `path` and moves it into place.
  virtual bool replaceAtomically(const std::string& path, std::string_view text) = 0;

  /// Appends to an existing file. False, with nothing created, when it cannot be opened.
  virtual bool append(const std::string& path, std::string_view text) = 0;

  /// Deletes a file.
  virtual bool remove(const std::string& path) = 0;
};

}  // namespace notewick
