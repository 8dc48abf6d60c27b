#include "platform/macos/secret_store.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/macos/main_loop.h"
#include "platform/macos/uuid_source.h"

namespace notewick {
namespace {

/// Runs in the default keychain, which `with_temporary_keychain` has made for the test.
class MacosSecretStoreTest : public testing::Test {
 protected:
  void SetUp() override {
    const char* keychain = std::getenv("NOTEWICK_TEST_KEYCHAIN");
    ASSERT_NE(keychain, nullptr) << "run by tests/macos/with_temporary_keychain";
    keychain_ = keychain;
  }
  ~MacosSecretStoreTest() override {
    security("unlock-keychain -p notewick");
    store_.remove(key_);
  }

  void security(const std::string& command) const {
    const std::string line = "/usr/bin/security " + command + " '" + keychain_ + "'";
    EXPECT_EQ(std::system(line.c_str()), 0) << line;
  }

  std::string keychain_;
  CocoaMainLoop loop_;
  KeychainSecretStore store_{loop_};
  SecretKey key_{"tools.velk.notewick.test", CocoaUuidSource().next()};
};

TEST_F(MacosSecretStoreTest, KeepsOneSecretUntilItIsRemoved) {
  EXPECT_EQ(store_.load(key_).state, SecretState::absent);
  EXPECT_EQ(store_.state(key_), SecretState::absent);
  EXPECT_EQ(store_.remove(key_), SecretWrite::done) << "there is none already";
  for (const std::string secret : {"first", "tökén"}) {
    EXPECT_EQ(store_.save(key_, secret), SecretWrite::done);
    EXPECT_EQ(store_.load(key_).state, SecretState::found);
    EXPECT_EQ(store_.load(key_).secret, secret);
  }
  EXPECT_EQ(store_.remove(key_), SecretWrite::done);
  EXPECT_EQ(store_.load(key_).state, SecretState::absent);
}

TEST_F(MacosSecretStoreTest, TakesASecretThatIsNoUtf8ForAbsent) {
  EXPECT_EQ(store_.save(key_, "\xFF\xFE"), SecretWrite::done);
  EXPECT_EQ(store_.load(key_).state, SecretState::absent);
}

TEST_F(MacosSecretStoreTest, SaysLockedWithoutAskingAndGoesOnWhenOpened) {
  EXPECT_EQ(store_.save(key_, "token"), SecretWrite::done);
  EXPECT_EQ(store_.state(key_), SecretState::found);
  security("lock-keychain");
  EXPECT_EQ(store_.state(key_), SecretState::locked);
  EXPECT_EQ(store_.load(key_).state, SecretState::locked);
  EXPECT_EQ(store_.save(key_, "other"), SecretWrite::locked);
  EXPECT_EQ(store_.state({key_.service, "another"}), SecretState::absent);
  EXPECT_FALSE(store_.watch([] {})) << "so each look asks";
  security("unlock-keychain -p notewick");
  EXPECT_EQ(store_.load(key_).secret, "token");
}

}  // namespace
}  // namespace notewick
