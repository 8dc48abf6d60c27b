#include "platform/posix/files.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef O_DIRECT
#include <linux/magic.h>
#include <sys/vfs.h>
#endif

#include <csignal>
#include <random>

#include "tests/platform/posix/folder_fixture.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

bool writesPastCache([[maybe_unused]] const std::string& file) {
#ifdef O_DIRECT
  struct statfs system {};
  const int probe = open(file.c_str(), O_RDONLY | O_DIRECT);
  close(probe);
  return probe >= 0 && statfs(file.c_str(), &system) == 0 && system.f_type != TMPFS_MAGIC;
#else
  return false;
#endif
}

class PosixFilesTest : public FolderTest {
 protected:
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_))
      names.push_back(entry.path().filename());
    return names;
  }

  [[nodiscard]] static struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
  }
  [[nodiscard]] static mode_t mode(const std::string& path) {
    return statusOf(path).st_mode & 07777U;
  }
  [[nodiscard]] ino_t inode(const std::string& name) const { return statusOf(path(name)).st_ino; }
};

/// While it lives no file of this process can grow beyond `bytes`, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limited{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    (void)std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int);
  rlimit before_{};
};

TEST_F(PosixFilesTest, HomeFolderIsHomeWithoutATrailingSlashElseOfThePasswordDatabase) {
  setenv("HOME", "/home/a person/", 1);
  EXPECT_EQ(files_.homeFolder(), "/home/a person");
  setenv("HOME", "/", 1);
  EXPECT_EQ(files_.homeFolder(), "");
  unsetenv("HOME");
  const std::string home = files_.homeFolder();
  EXPECT_TRUE(home.starts_with('/')) << home;
  setenv("HOME", "relative", 1);
  EXPECT_EQ(files_.homeFolder(), home);
}

TEST_F(PosixFilesTest, CreatesAllMissingFoldersForTheirOwnerOnlyAndLeavesTheOthers) {
  umask(0);
  fs::create_directory(path("there"));
  chmod(path("there").c_str(), 0750);
  EXPECT_TRUE(files_.createFolders(path("there/c d/e")));
  EXPECT_TRUE(files_.createFolders(path("there")));
  EXPECT_EQ(mode(path("there")), 0750U);
  EXPECT_EQ(mode(path("there/c d")), 0700U);
  EXPECT_EQ(mode(path("there/c d/e")), 0700U);
}

TEST_F(PosixFilesTest, KeepingAFolderPrivateTakesTheRightsOfOthersFromItAndItsFiles) {
  chmod(folder_.c_str(), 0755);
  chmod(contains("list", "x").c_str(), 0664);
  chmod(contains("read only", "x").c_str(), 0444);
  fs::create_directory(path("below"));
  chmod(path("below").c_str(), 0755);
  const std::string elsewhere = testing::TempDir() + "notewick-elsewhere";
  std::ofstream(elsewhere) << "x";
  chmod(elsewhere.c_str(), 0644);
  fs::create_symlink(elsewhere, path("link"));
  files_.keepPrivate(folder_);
  EXPECT_EQ(mode(folder_), 0700U);
  EXPECT_EQ(mode(path("list")), 0600U);
  EXPECT_EQ(mode(path("read only")), 0400U);
  EXPECT_EQ(mode(path("below")), 0755U);
  EXPECT_EQ(mode(elsewhere), 0644U);
  fs::remove(elsewhere);
  files_.keepPrivate(path("missing"));
}

TEST_F(PosixFilesTest, EveryWriteTakesTheRightsOfOthersFromFileAndFolder) {
  const auto widened = [this](const std::string& name) {
    chmod(folder_.c_str(), 0755);
    chmod(contains(name, "x").c_str(), 0644);
    return path(name);
  };
  files_.replaceInPlace(widened("list"), "[]");
  EXPECT_EQ(mode(path("list")), 0600U);
  EXPECT_EQ(mode(folder_), 0700U);
  files_.append(widened("log"), "y");
  EXPECT_EQ(mode(path("log")), 0600U);
  EXPECT_EQ(mode(folder_), 0700U);
}

TEST_F(PosixFilesTest, AFileInTheWayOfAFolderIsAFailure) {
  contains("taken", "x");
  EXPECT_FALSE(files_.createFolders(path("taken")));
  EXPECT_FALSE(files_.createFolders(path("taken/below")));
}

TEST_F(PosixFilesTest, ReadsTheWholeContentsByteForByteOfAFileThatIsThere) {
  for (const std::string& text : {std::string("a\0\xff\n", 4) + std::string(100'000, 'z'), {}}) {
    contains("file", text);
    EXPECT_EQ(files_.read(path("file")), text);
    EXPECT_EQ(files_.size(path("file")), text.size());
  }
  EXPECT_EQ(files_.read(path("missing")), std::nullopt);
  EXPECT_EQ(files_.size(path("missing")), std::nullopt);
}

TEST_F(PosixFilesTest, AFolderOrAPipeIsNoFileAndNeverWaitedFor) {
  EXPECT_EQ(files_.size(folder_), std::nullopt);
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {folder_, path("pipe")}) {
    EXPECT_EQ(files_.read(name), std::nullopt) << name;
    EXPECT_FALSE(files_.replaceInPlace(name, "x")) << name;
    EXPECT_FALSE(files_.append(name, "x")) << name;
  }
}

TEST_F(PosixFilesTest, ADeviceUnderTheNameOfAFileIsThereAndTakesNothing) {
  fs::create_symlink("/dev/null", path("log"));
  EXPECT_EQ(files_.size(path("log")), 0U);
  EXPECT_FALSE(files_.append(path("log"), "x"));
  EXPECT_TRUE(fs::is_symlink(path("log")));
}

/// Bytes that this process has read so far.
std::uint64_t bytesRead() {
  std::string name;
  std::uint64_t count = 0;
  std::ifstream("/proc/self/io") >> name >> count;
  return count;
}

TEST_F(PosixFilesTest, AFileOfMoreThan64MegabytesIsNotReadAndIsReplaced) {
  constexpr std::uintmax_t LARGEST = 64UL * 1024 * 1024;
  const std::string file = contains("list", "[]");
  fs::resize_file(file, LARGEST);
  EXPECT_EQ(files_.read(file)->size(), LARGEST);
  for (const std::uintmax_t size : {LARGEST + 1, std::uintmax_t{1} << 40U}) {
    fs::resize_file(file, size);
    const std::uint64_t before = bytesRead();
    EXPECT_EQ(files_.read(file), std::nullopt);
    EXPECT_LT(bytesRead() - before, 4096U);
  }
  EXPECT_TRUE(files_.replaceInPlace(file, "[1]"));
  EXPECT_EQ(contents("list"), "[1]");
}

TEST_F(PosixFilesTest, ReplacesInPlaceByALongerAndByAShorterText) {
  contains("list", "[1]");
  const ino_t before = inode("list");
  for (const auto* const text : {"[1, 2, 3]", "[]", ""}) {
    EXPECT_TRUE(files_.replaceInPlace(path("list"), text));
    EXPECT_EQ(contents("list"), text);
  }
  EXPECT_EQ(inode("list"), before);
  EXPECT_THAT(names(), UnorderedElementsAre("list"));
}

TEST_F(PosixFilesTest, ReplacingInPlaceCreatesTheFileForItsOwnerOnly) {
  umask(0);
  EXPECT_TRUE(files_.replaceInPlace(path("new"), "[]"));
  EXPECT_EQ(contents("new"), "[]");
  EXPECT_EQ(mode(path("new")), 0600U);
}

TEST_F(PosixFilesTest, ReplacingInPlaceFollowsALinkThatTheUserPutThere) {
  contains("elsewhere", "[1]");
  fs::create_symlink(path("elsewhere"), path("list"));
  EXPECT_TRUE(files_.replaceInPlace(path("list"), "[2]"));
  EXPECT_EQ(contents("elsewhere"), "[2]");
  EXPECT_TRUE(fs::is_symlink(path("list")));
}

TEST_F(PosixFilesTest, ReplacingInPlaceDoesNotCreateFolders) {
  EXPECT_FALSE(files_.replaceInPlace(path("missing/list"), "[]"));
  EXPECT_THAT(names(), UnorderedElementsAre());
}

TEST_F(PosixFilesTest, ALongerTextThatDoesNotFitOnTheDiskLeavesTheOldOne) {
  contains("list", std::string(6'000, 'a'));
  const FullDisk full(10'000);
  EXPECT_FALSE(files_.replaceInPlace(path("list"), std::string(20'000, 'b')));
  EXPECT_EQ(contents("list"), std::string(6'000, 'a'));
}

TEST_F(PosixFilesTest, AShorterTextIsSavedOnAFullDisk) {
  contains("list", std::string(6'000, 'a'));
  const FullDisk full(6'000);
  EXPECT_TRUE(files_.replaceInPlace(path("list"), "[]"));
  EXPECT_EQ(contents("list"), "[]");
}

TEST_F(PosixFilesTest, ANewFileThatDoesNotFitOnTheDiskIsNotLeftBehind) {
  const FullDisk full(100);
  EXPECT_FALSE(files_.replaceInPlace(path("list"), std::string(200, 'b')));
  EXPECT_FALSE(files_.replaceAtomically(path("log"), std::string(200, 'b')));
  EXPECT_THAT(names(), UnorderedElementsAre());
}

TEST_F(PosixFilesTest, AnAppendThatDoesNotFitOnTheDiskLeavesTheOldText) {
  contains("log", std::string(80, 'a'));
  const FullDisk full(100);
  EXPECT_FALSE(files_.append(path("log"), std::string(50, 'b')));
  EXPECT_EQ(contents("log"), std::string(80, 'a'));
}

TEST_F(PosixFilesTest, ReplacesAtomicallyLeavingNothingElseBehind) {
  umask(0);
  contains("log", "old");
  const ino_t before = inode("log");
  EXPECT_TRUE(files_.replaceAtomically(path("log"), "new\n"));
  EXPECT_EQ(contents("log"), "new\n");
  EXPECT_EQ(mode(path("log")), 0600U);
  EXPECT_NE(inode("log"), before);
  EXPECT_THAT(names(), UnorderedElementsAre("log"));
}

TEST_F(PosixFilesTest, ReplacingAtomicallyFailsWhereTheFolderIsMissingOrAFolderIsInTheWay) {
  fs::create_directories(path("taken/inner"));
  EXPECT_FALSE(files_.replaceAtomically(path("missing/log"), "x"));
  EXPECT_FALSE(files_.replaceAtomically(path("taken"), "x"));
  EXPECT_THAT(names(), UnorderedElementsAre("taken"));
}

TEST_F(PosixFilesTest, AppendsToAnExistingFileOnly) {
  contains("log", "one\n");
  EXPECT_TRUE(files_.append(path("log"), "two\n"));
  EXPECT_EQ(contents("log"), "one\ntwo\n");
  EXPECT_FALSE(files_.append(path("missing"), "x"));
  EXPECT_THAT(names(), UnorderedElementsAre("log"));
}

TEST_F(PosixFilesTest, RemovesAFileButNoFolder) {
  contains("log", "x");
  fs::create_directory(path("folder"));
  EXPECT_TRUE(files_.remove(path("log")));
  EXPECT_FALSE(files_.remove(path("log")));
  EXPECT_FALSE(files_.remove(path("folder")));
  EXPECT_THAT(names(), UnorderedElementsAre("folder"));
}

[[nodiscard]] std::string withoutTrailingBlanks(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

TEST_F(PosixFilesTest, AProcessKilledWhileSavingLeavesTheOldOrTheNewText) {
  contains("list", "");
  const std::size_t pages = writesPastCache(path("list")) ? 6 : 1;  // elsewhere one is promised
  const std::string shorter = "[" + std::string(300, 'a') + "]";
  const std::string longer = "[" + std::string(pages * 4'000, 'b') + "]";
  std::minstd_rand random(20'240'611);  // NOLINT: the same instants in every run
  std::uniform_int_distribution<useconds_t> instant(0, 3'000);
  contains("list", shorter);
  for (int kill = 0; kill < 100; ++kill) {
    const pid_t writer = fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      for (;;) {
        files_.replaceInPlace(path("list"), longer);
        files_.replaceInPlace(path("list"), shorter);
      }
    }
    usleep(instant(random));
    ::kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    const std::string left = withoutTrailingBlanks(contents("list"));
    EXPECT_TRUE(left == shorter || left == longer) << left.size() << ": " << left.substr(0, 80);
  }
}

}  // namespace
}  // namespace notewick
