#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notewick {

/// An open regular file, closed at the end of its life. Calls that a signal interrupts are made
/// again. Results are true for success.
class OpenFile {
 public:
  /// Opens `path` with these `flags` (O_RDONLY and so on), a new file for its owner only.
  OpenFile(const std::string& path, int flags);
  /// Makes a new file beside `path`, whose name is then `name()`, and opens it for writing.
  [[nodiscard]] static OpenFile beside(const std::string& path);

  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&&) = delete;
  ~OpenFile();

  [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
  [[nodiscard]] const std::string& name() const { return name_; }

  /// The size in bytes when the file was opened.
  [[nodiscard]] std::uint64_t size() const { return size_; }

  /// The contents; absent when they cannot be read or turn out to be longer than `most` bytes,
  /// whatever size the file claims.
  [[nodiscard]] std::optional<std::string> readAll(std::uint64_t most) const;
  /// Writes all of `text` from `offset` on, in one call unless the system takes only a part of it.
  [[nodiscard]] bool write(std::string_view text, std::uint64_t offset) const;
  /// Writes all of `contents` from the start of the file on, whose size is at least that. Whole
  /// pages go to the disk in one call and past the system's cache, where the file system lets them:
  /// such a call is not broken off when the process is killed. What does not do that (tmpfs, some
  /// network file systems, systems without O_DIRECT, such as macOS), and a size that is no whole
  /// number of pages, gets a plain write.
  [[nodiscard]] bool writePages(std::string_view contents) const;
  /// `size` rounded up to whole pages, as disks and file systems count them.
  [[nodiscard]] static std::uint64_t wholePages(std::uint64_t size);
  /// Leaves the file to its owner, as far as the system lets us.
  void takeRightsOfOthers() const;
  [[nodiscard]] bool truncate(std::uint64_t size) const;
  /// Waits until what was written is on the disk.
  [[nodiscard]] bool flush() const;

 private:
  OpenFile(int descriptor, std::string name);
  [[nodiscard]] bool writePastCache(std::string_view pages) const;

  int descriptor_;
  std::string name_;
  std::uint64_t size_ = 0;
};

}  // namespace notewick
