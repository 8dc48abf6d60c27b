#include "platform/linux/workspace.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/linux/session/core_limit.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;

class DesktopWorkspaceTest : public testing::Test {
 protected:
  /// Puts `script` in the place of the desktop's opener of links.
  void openerIs(const std::string& script) {
    const fs::path folder = LinuxSession::current().home() + "/bin";
    fs::create_directory(folder);
    std::ofstream(folder / "xdg-open") << "#!/bin/sh\n" << script << "\n";
    fs::permissions(folder / "xdg-open", fs::perms::owner_all);
    qputenv("PATH", QByteArray::fromStdString(folder.string()) + ":" + path_);
  }
  ~DesktopWorkspaceTest() override {
    qputenv("PATH", path_);
    qputenv("XDG_CONFIG_HOME", configuration_);
  }

  [[nodiscard]] static std::string contents(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  DesktopWorkspace workspace_;
  const QByteArray path_ = qgetenv("PATH");
  const QByteArray configuration_ = qgetenv("XDG_CONFIG_HOME");
};

TEST_F(DesktopWorkspaceTest, HandsALinkUnchangedToTheDesktopsOpenerAndDoesNotWaitForIt) {
  const std::string opened = LinuxSession::current().home() + "/opened";
  ASSERT_EQ(mkfifo(opened.c_str(), 0600), 0);
  openerIs("printf '%s' \"$*\" >" + opened);  // waits for the reader of the pipe
  workspace_.openUrl("https://velk.example/case-notes?a=%20b&c=$HOME;x");
  EXPECT_EQ(contents(opened), "https://velk.example/case-notes?a=%20b&c=$HOME;x");
}

TEST_F(DesktopWorkspaceTest, TheProgramLeavesNoCoreButTheOpenerMay) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_CORE, &before), 0);
  const std::string limit = LinuxSession::current().home() + "/limit";
  ASSERT_EQ(mkfifo(limit.c_str(), 0600), 0);
  openerIs("ulimit -S -c >" + limit);
  refuseCores();
  rlimit refused{};
  getrlimit(RLIMIT_CORE, &refused);
  EXPECT_EQ(refused.rlim_cur, 1U);
  EXPECT_EQ(refused.rlim_max, before.rlim_max);
  workspace_.openUrl("https://velk.example/");
  const bool unlimited = before.rlim_cur == RLIM_INFINITY;
  // The shell counts in blocks of 512 bytes.
  EXPECT_EQ(contents(limit),
            (unlimited ? "unlimited" : std::to_string(before.rlim_cur / 512)) + "\n");
  setrlimit(RLIMIT_CORE, &before);
}

TEST_F(DesktopWorkspaceTest, SaysNothingOfAMissingOpener) {
  qputenv("PATH", "/nonexistent");
  testing::internal::CaptureStderr();
  workspace_.openUrl("https://velk.example/");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(DesktopWorkspaceTest, ConfigurationIsWhereXdgSaysOrInTheHomeFolder) {
  const std::string fallback = LinuxSession::current().home() + "/.config";
  qunsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(workspace_.configurationFolder(), fallback);
  for (const auto& [value, folder] :
       {std::pair("/some/where", std::string("/some/where")), std::pair("relative/path", fallback),
        std::pair("", fallback)}) {
    qputenv("XDG_CONFIG_HOME", value);
    EXPECT_EQ(workspace_.configurationFolder(), folder);
  }
}

}  // namespace
}  // namespace notewick
