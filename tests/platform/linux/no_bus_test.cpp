// What the services do on a system without a session bus.
#include <gtest/gtest.h>

#include "platform/linux/notifier.h"
#include "platform/linux/secret_store.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

const SecretKey TOKEN{"tools.velk.notewick", "refresh-token"};

TEST(NoBusTest, NotificationsAreDropped) {
  testing::internal::CaptureStderr();
  DBusNotifier notifier;
  notifier.show("title", "body", nullptr);
  catchUp();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(NoBusTest, ThereIsNoSecretStoreWhichReportsNothingAndCannotBeUnlocked) {
  SecretServiceStore store;
  EXPECT_EQ(store.state(TOKEN), SecretState::noStore);
  EXPECT_EQ(store.load(TOKEN).state, SecretState::noStore);
  EXPECT_EQ(store.save(TOKEN, "s3cr3t"), SecretWrite::noStore);
  EXPECT_EQ(store.remove(TOKEN), SecretWrite::noStore);
  EXPECT_FALSE(store.watch([] { ADD_FAILURE() << "called without a bus"; }));
  std::optional<bool> opened;
  store.unlock([&](bool answer) { opened = answer; });
  EXPECT_EQ(opened, std::nullopt);
  EXPECT_TRUE(waitUntil([&] { return opened.has_value(); }));
  EXPECT_EQ(opened, false);
}

}  // namespace
}  // namespace notewick
