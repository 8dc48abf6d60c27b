#include "platform/macos/notifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "detect/notification.h"
#include "tests/support/fake_process_launcher.h"

namespace notewick {
namespace {

TEST(MacosNotifierTest, LaunchesTheScript) {
  FakeProcessLauncher launcher;
  ScriptNotifier(launcher).show("Title", "Body", [] {});
  EXPECT_THAT(launcher.launches, testing::ElementsAre(notificationCommand("Title", "Body")));
}

}  // namespace
}  // namespace notewick
