#include "platform/macos/workspace.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/macos/bridge/text.h"
#include "platform/macos/uuid_source.h"
#include "platform/posix/files.h"
#include "ui/start_at_login.h"

namespace notewick {
namespace {

TEST(MacosWorkspaceTest, NamesTheBundleForALaunchAgentByItsFullPath) {
  EXPECT_TRUE(std::filesystem::exists(CocoaWorkspace().bundlePath()));
  EXPECT_EQ(CocoaWorkspace().bundlePath().front(), '/');
  EXPECT_EQ(CocoaWorkspace().loginItemForm(), LoginItemForm::launchAgent);
}

TEST(MacosWorkspaceTest, TheSystemReadsTheLaunchAgent) {
  const auto file = std::filesystem::temp_directory_path() / (CocoaUuidSource().next() + ".plist");
  ASSERT_TRUE(PosixFiles().replaceAtomically(
      file.string(), launchAgentText("/Applications/A & B <x>/VELK Notewick.app")));
  EXPECT_EQ(std::system(("/usr/bin/plutil -lint '" + file.string() + "'").c_str()), 0);
  NSDictionary* agent =
      [NSDictionary dictionaryWithContentsOfURL:[NSURL fileURLWithPath:nsString(file.string())]
                                          error:nil];
  EXPECT_TRUE([agent[@"ProgramArguments"]
      isEqual:@[ @"/Applications/A & B <x>/VELK Notewick.app/Contents/MacOS/VELKNotewick" ]]);
  EXPECT_TRUE([agent[@"Label"] isEqual:@"tools.velk.notewick"]);
  EXPECT_TRUE([agent[@"RunAtLoad"] isEqual:@YES]);
  EXPECT_EQ(agent.count, 3U);
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace notewick
