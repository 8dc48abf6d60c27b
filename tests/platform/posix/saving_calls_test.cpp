#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "tests/platform/posix/folder_fixture.h"

namespace {

/// What the system is asked to do for one save, and what it is to refuse.
struct Disk {
  bool records = false;
  std::vector<std::string> calls;
  bool flushFails = false;
  bool refusesDirectWrites = false;
  bool cutsDirectWritesShort = false;
} disk;

bool isDirect(int file) {
  return (fcntl(file, F_GETFL) & O_DIRECT) != 0;
}

void record(const std::string& call) {
  if (disk.records) disk.calls.push_back(call);
}

}  // namespace

// This program's own versions stand before those of the system's library.
extern "C" ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
  const bool direct = isDirect(file);
  record((direct ? "write past the cache " : "write ") + std::to_string(count) + " at " +
         std::to_string(offset));
  if (direct && disk.refusesDirectWrites) {
    errno = EINVAL;
    return -1;
  }
  if (direct && disk.cutsDirectWritesShort) count /= 2;
  return syscall(SYS_pwrite64, file, bytes, count, offset);
}

extern "C" int fsync(int file) {
  record("flush");
  if (!disk.flushFails) return static_cast<int>(syscall(SYS_fsync, file));
  errno = EIO;
  return -1;
}

extern "C" int ftruncate(int file, off_t size) noexcept {
  record("cut to " + std::to_string(size));
  return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

namespace notewick {
namespace {

using testing::ElementsAre;

/// Saves that are watched at the border to the system.
class SavingCallsTest : public FolderTest {
 protected:
  SavingCallsTest() {
    const int file = open(list_.c_str(), O_RDONLY | O_DIRECT);
    takesDirectWrites_ = file >= 0;
    close(file);
    disk.records = true;
  }
  ~SavingCallsTest() override { disk = {}; }

  const std::string list_ = contains("list", std::string(5000, 'a'));
  bool takesDirectWrites_ = false;
};

TEST_F(SavingCallsTest, ReservesWritesWholePagesInOneCallFlushesAndOnlyThenCuts) {
  const std::string way = takesDirectWrites_ ? "write past the cache " : "write ";
  EXPECT_TRUE(files_.replaceInPlace(list_, std::string(9000, 'b')));
  EXPECT_THAT(disk.calls,
              ElementsAre("write 7288 at 5000", way + "12288 at 0", "flush", "cut to 9000"));
  disk.calls.clear();
  EXPECT_TRUE(files_.replaceInPlace(list_, "[]"));
  EXPECT_THAT(disk.calls,
              ElementsAre("write 3288 at 9000", way + "12288 at 0", "flush", "cut to 2"));
}

TEST_F(SavingCallsTest, AFlushThatFailsLeavesTheNewTextUncutAndIsAFailure) {
  disk.flushFails = true;
  EXPECT_FALSE(files_.replaceInPlace(list_, "[1]"));
  EXPECT_EQ(disk.calls.back(), "flush");
  EXPECT_EQ(contents("list"), "[1]" + std::string(8192 - 3, ' '));
  disk.flushFails = false;
  EXPECT_TRUE(files_.replaceInPlace(list_, "[2]"));
  EXPECT_EQ(contents("list"), "[2]");
}

TEST_F(SavingCallsTest, AFileSystemThatRefusesDirectWritesGetsPlainOnes) {
  disk.refusesDirectWrites = true;
  EXPECT_TRUE(files_.replaceInPlace(list_, "[1]"));
  EXPECT_EQ(contents("list"), "[1]");
}

TEST_F(SavingCallsTest, ADirectWriteThatEndsEarlyIsMadeAgainAsAPlainOne) {
  disk.cutsDirectWritesShort = true;
  EXPECT_TRUE(files_.replaceInPlace(list_, std::string(9000, 'b')));
  EXPECT_EQ(contents("list"), std::string(9000, 'b'));
}

}  // namespace
}  // namespace notewick
