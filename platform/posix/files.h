#pragma once

#include "platform/files.h"

namespace notewick {

/// Files through the POSIX calls alone, the same on every system that has them.
///
/// Only regular files are read and written: a device, a socket or a pipe under the name of a file
/// is a failure, and never waited for; it is there, though, with a size: a log that the user linked
/// to /dev/null stays off. A symbolic link that the user put there is followed, except by
/// `replaceAtomically`, which puts the file in the link's place.
///
/// What is promised of `replaceInPlace`:
/// - Space is reserved by writing blanks behind the old text, up to a whole page, which any file
///   system understands and any JSON reader skips; when they do not fit they are cut off again and
///   nothing has changed.
/// - A process killed on the way leaves the old or the new text, possibly followed by blanks, where
///   whole pages can be handed to the disk past the system's cache (`OpenFile::writePages`).
///   Elsewhere that holds as long as both texts lie within one page: a system takes a write into
///   its cache page by page, and may stop between two pages when it ends the process. Then new
///   pages stand before old ones.
/// - The new text is on the disk before the file is cut, because a file system that wrote the two
///   down in the other order would show a cut old text after a power failure. After success it
///   survives one.
/// - A write that fails half-way for a reason other than space (a broken disk) is told as a failure
///   and may leave a mixture; the caller still holds the text and saves again at the next change.
///
/// `replaceAtomically` promises the old or the new file, whatever happens. `append` is neither
/// atomic nor flushed: it is for logs.
class PosixFiles : public Files {
 public:
  /// HOME where it is an absolute path, else what the password database says.
  [[nodiscard]] std::string homeFolder() const override;

  bool createFolders(const std::string& path) override;
  [[nodiscard]] bool isFolder(const std::string& path) override;
  void keepPrivate(const std::string& folder) override;
  [[nodiscard]] std::optional<std::string> read(const std::string& path) override;
  [[nodiscard]] std::optional<std::uint64_t> size(const std::string& path) override;
  bool replaceInPlace(const std::string& path, std::string_view text) override;
  bool replaceAtomically(const std::string& path, std::string_view text) override;
  bool append(const std::string& path, std::string_view text) override;
  bool remove(const std::string& path) override;
};

}  // namespace notewick
