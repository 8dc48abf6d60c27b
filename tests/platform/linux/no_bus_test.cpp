// What the services do on a system without a session bus.
#include <gtest/gtest.h>

#include "platform/linux/notifier.h"
#include "platform/linux/secret_store.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

const SecretKey token{"tools.velk.notewick", "refresh-token"};

TEST(NoBusTest, NotificationsAreDropped) {
  testing::internal::CaptureStderr();
  DBusNotifier notifier;
  notifier.show("title", "body", nullptr);
  catchUp();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(NoBusTest, ThereIsNoSecretStore) {
  SecretServiceStore store;
  EXPECT_EQ(store.state(token), SecretState::noStore);
  EXPECT_EQ(store.load(token).state, SecretState::noStore);
  EXPECT_EQ(store.save(token, "s3cr3t"), SecretWrite::noStore);
  EXPECT_EQ(store.remove(token), SecretWrite::noStore);
}

TEST(NoBusTest, TheSecretStoreReportsNoChanges) {
  SecretServiceStore store;
  EXPECT_FALSE(store.watch([] { ADD_FAILURE() << "called without a bus"; }));
}

TEST(NoBusTest, ThereIsNoSecretStoreToUnlock) {
  SecretServiceStore store;
  bool answered = false;
  store.unlock([&](bool opened) {
    EXPECT_FALSE(opened);
    answered = true;
  });
  EXPECT_FALSE(answered);
  EXPECT_TRUE(waitUntil([&] { return answered; }));
}

}  // namespace
}  // namespace notewick
