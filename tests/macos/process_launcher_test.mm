#include "platform/macos/process_launcher.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/macos/uuid_source.h"
#include "tests/macos/eventually.h"

namespace notewick {
namespace {

TEST(MacosProcessLauncherTest, StartsAProgramWithItsArgumentsAsTheyStand) {
  const auto file = std::filesystem::temp_directory_path() / (CocoaUuidSource().next() + " \"$x");
  TaskLauncher().launch({"/usr/bin/touch", {file.string()}});
  EXPECT_TRUE(eventually([&] { return std::filesystem::exists(file); }));
  std::filesystem::remove(file);
}

TEST(MacosProcessLauncherTest, IgnoresAProgramThatIsNotThere) {
  EXPECT_NO_THROW(TaskLauncher().launch({"/nowhere/notewick", {}}));
}

}  // namespace
}  // namespace notewick
