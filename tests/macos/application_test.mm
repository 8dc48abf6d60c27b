#include "platform/macos/application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

TEST(MacosApplicationTest, IsAnAccessory) {
  EXPECT_EQ(NSApplication.sharedApplication.activationPolicy,
            NSApplicationActivationPolicyAccessory);
}

TEST(MacosApplicationTest, HasTheEditingShortcuts) {
  std::vector<std::string> shortcuts;
  NSMenu* edit = [editingMenu() itemAtIndex:0].submenu;
  for (NSMenuItem* item in edit.itemArray) {
    shortcuts.push_back(utf8(item.keyEquivalent) + " " + utf8(NSStringFromSelector(item.action)));
    EXPECT_EQ(item.target, nil) << "goes to whatever has the keyboard";
  }
  EXPECT_THAT(shortcuts, testing::ElementsAre("z undo:", "x cut:", "c copy:", "v paste:",
                                              "a selectAll:", "w performClose:"));
}

}  // namespace
}  // namespace notewick
