#include "client/keychain.h"

#include <gmock/gmock.h>

#include "tests/support/fake_secret_store.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeychainTest : public testing::Test {
 protected:
  /// Asks to open the store and notes the answer.
  void asks() {
    keychain->requestUnlock([this](bool opened) { answers.push_back(opened); });
  }

  FakeClock clock;
  FakeMainLoop loop{clock};
  FakeSecretStore store{loop};
  std::shared_ptr<Keychain> keychain = std::make_shared<Keychain>(store);
  std::vector<bool> answers;
};

TEST_F(KeychainTest, ASavedTokenIsThere) {
  keychain->keychainSave("T");
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_EQ(store.refreshToken(), "T");
  EXPECT_TRUE(keychain->holdsToken());
}

TEST_F(KeychainTest, AnotherTokenReplacesIt) {
  keychain->keychainSave("T");
  keychain->keychainSave("U");
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_EQ(store.size(), 1u);
}

TEST_F(KeychainTest, ADeletedTokenIsGone) {
  keychain->keychainSave("T");
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_EQ(store.size(), 0u);
  EXPECT_FALSE(keychain->holdsToken());
}

TEST_F(KeychainTest, WithoutASecretStoreThereIsNoTokenAndNoQuestion) {
  store.missing = true;
  keychain->keychainSave("T");
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(KeychainTest, AFailedWriteIsSwallowed) {
  store.failWrites = true;
  keychain->keychainSave("T");
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
}

// --- Locked --------------------------------------------------------------------------------------

class LockedKeychainTest : public KeychainTest {
 protected:
  LockedKeychainTest() {
    store.setRefreshToken("T");
    store.locked = true;
  }
};

TEST_F(LockedKeychainTest, ATokenOutOfReachIsHeldButNotGiven) {
  EXPECT_TRUE(keychain->isLocked());
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_TRUE(keychain->wantsUnlock());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
}

TEST_F(LockedKeychainTest, LookingNeverAsks) {
  (void)keychain->keychainLoad();
  (void)keychain->isLocked();
  keychain->keychainSave("U");
  keychain->keychainDelete();
  EXPECT_EQ(store.unlockRequests, 0u);
}

TEST_F(LockedKeychainTest, OpenedItGivesTheToken) {
  asks();
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_FALSE(keychain->isLocked());
}

TEST_F(LockedKeychainTest, TheAnswerArrivesInALaterTurn) {
  asks();
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(LockedKeychainTest, AQuestionOnScreenIsNotAskedAgain) {
  asks();
  asks();
  EXPECT_EQ(store.unlockRequests, 1u);
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, RefusedItCountsAsEmpty) {
  asks();
  store.userAnswers(false);
  EXPECT_THAT(answers, ElementsAre(false));
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, ARefusalCanBeTakenBack) {
  asks();
  store.userAnswers(false);
  keychain->forgetRefusal();
  EXPECT_TRUE(keychain->isLocked());
  asks();
  EXPECT_EQ(store.unlockRequests, 2u);
  store.userAnswers(true);
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

TEST_F(LockedKeychainTest, ATokenToBeSavedWaitsInMemory) {
  keychain->keychainSave("U");
  EXPECT_EQ(keychain->keychainLoad(), "U");
  EXPECT_EQ(store.refreshToken(), "T");
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_TRUE(keychain->wantsUnlock());
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, TheNewestTokenIsTheOneThatWaits) {
  keychain->keychainSave("U");
  keychain->keychainSave("V");
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), "V");
}

TEST_F(LockedKeychainTest, ATokenThatWaitsOutlivesARefusal) {
  keychain->keychainSave("U");
  asks();
  store.userAnswers(false);
  EXPECT_EQ(keychain->keychainLoad(), "U");
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, AStoreOpenedByOthersIsUsedAtTheNextSave) {
  keychain->keychainSave("U");
  store.locked = false;
  keychain->keychainSave("V");
  EXPECT_EQ(store.refreshToken(), "V");
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, ARemovalWaitsAsWell) {
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(store.refreshToken(), "T");
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), std::nullopt);
}

TEST_F(LockedKeychainTest, ATokenToBeRemovedDoesNotComeBackWhenOthersOpenTheStore) {
  keychain->keychainDelete();
  store.locked = false;
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_FALSE(keychain->holdsToken());
}

TEST_F(LockedKeychainTest, ATokenSavedAfterARemovalIsTheOneThatStays) {
  keychain->keychainDelete();
  keychain->keychainSave("U");
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), "U");
}

TEST_F(LockedKeychainTest, ARemovalAfterASaveLeavesNothing) {
  keychain->keychainSave("U");
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), std::nullopt);
}

TEST_F(LockedKeychainTest, AnAnswerAfterTheEndReachesNobody) {
  asks();
  keychain.reset();
  store.userAnswers(true);
  EXPECT_THAT(answers, IsEmpty());
}

}  // namespace
}  // namespace notewick
