#include "client/keychain.h"

#include <gmock/gmock.h>

#include "tests/support/fake_secret_store.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeychainTest : public testing::Test {
 protected:
  KeychainTest() { startAgain(); }

  /// The program starts with the store as it is now.
  void startAgain() {
    loop.dropPosted();
    keychain = Keychain::create(store);
    keychain->setUnlockObserver([this](bool opened) { answers.push_back(opened); });
  }

  FakeClock clock;
  Trace trace;
  FakeMainLoop loop{clock, trace};
  FakeSecretStore store{loop};
  std::shared_ptr<Keychain> keychain;
  std::vector<bool> answers;  ///< what the observer was told
};

TEST_F(KeychainTest, ASavedTokenIsThereUntilItIsReplacedOrDeleted) {
  keychain->keychainSave("T");
  keychain->keychainSave("U");
  EXPECT_EQ(keychain->keychainLoad(), "U");
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_EQ(store.size(), 1u);
  EXPECT_TRUE(keychain->holdsToken());
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_EQ(store.size(), 0u);
  EXPECT_FALSE(keychain->holdsToken());
}

TEST_F(KeychainTest, AFailedWriteIsSwallowed) {
  store.failWrites = true;
  keychain->keychainSave("T");
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_FALSE(keychain->wantsUnlock());
  store.othersWrite("T");
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

// --- No store ------------------------------------------------------------------------------------

class KeychainWithoutAStoreTest : public KeychainTest {
 protected:
  KeychainWithoutAStoreTest() { store.missing = true; }
};

TEST_F(KeychainWithoutAStoreTest, ASavedTokenIsThereUntilItIsDeletedAndNobodyIsAsked) {
  EXPECT_TRUE(keychain->hasNoStore());
  EXPECT_FALSE(keychain->holdsToken());
  keychain->keychainSave("T");
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_TRUE(keychain->hasNoStore());
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_FALSE(keychain->wantsUnlock());
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(KeychainWithoutAStoreTest, ATokenIsGoneWhenTheProgramStartsAgain) {
  keychain->keychainSave("T");
  startAgain();
  EXPECT_FALSE(keychain->holdsToken());
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesTakesTheToken) {
  keychain->keychainSave("T");
  store.comes();
  EXPECT_EQ(store.refreshToken(), "T");
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_FALSE(keychain->hasNoStore());
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesLockedIsOneToOpen) {
  keychain->keychainSave("T");
  store.locked = true;
  store.comes();
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_TRUE(keychain->wantsUnlock());
  keychain->requestUnlock();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), "T");
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesAfterASignOutKeepsWhatItHolds) {
  keychain->keychainSave("T");
  keychain->keychainDelete();
  store.setRefreshToken("earlier");
  store.comes();
  EXPECT_EQ(keychain->keychainLoad(), "earlier");
}

// --- Remembered ----------------------------------------------------------------------------------

class RememberedTokenTest : public KeychainTest {
 protected:
  RememberedTokenTest() { store.setRefreshToken("T"); }

  void looksTwice() {
    for (int look = 0; look < 2; ++look) {
      EXPECT_TRUE(keychain->holdsToken());
      EXPECT_EQ(keychain->keychainLoad(), "T");
      EXPECT_FALSE(keychain->isLocked());
    }
  }
};

TEST_F(RememberedTokenTest, WhetherThereIsATokenIsAskedOnceAndTheTokenNotFetched) {
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 1u);
  EXPECT_EQ(store.fetches, 0u);
}

TEST_F(RememberedTokenTest, ATokenThatWasReadIsNotFetchedAgain) {
  looksTwice();
  EXPECT_EQ(store.fetches, 1u);
}

TEST_F(RememberedTokenTest, WhatWasWrittenIsNotAskedForAtAll) {
  keychain->keychainSave("T");
  looksTwice();
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 0u);
}

TEST_F(RememberedTokenTest, WhatOthersChangeIsSeenAndNobodyIsTold) {
  looksTwice();
  store.othersWrite("U");
  EXPECT_EQ(keychain->keychainLoad(), "U");
  store.othersRemove();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(RememberedTokenTest, AStoreThatReportsNothingIsLookedIntoEachTimeWithoutFetching) {
  store.reportsChanges = false;
  startAgain();
  looksTwice();
  EXPECT_EQ(store.fetches, 1u);
  store.othersRemove();
  EXPECT_FALSE(keychain->holdsToken());
}

// --- Locked --------------------------------------------------------------------------------------

class LockedKeychainTest : public KeychainTest {
 protected:
  LockedKeychainTest() {
    store.setRefreshToken("T");
    store.locked = true;
  }

  void userIsAskedAndAnswers(bool open) {
    keychain->requestUnlock();
    store.userAnswers(open);
  }
};

TEST_F(LockedKeychainTest, ATokenOutOfReachIsHeldButNotGivenAndLookingNeverAsks) {
  EXPECT_TRUE(keychain->isLocked());
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_TRUE(keychain->wantsUnlock());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_EQ(store.unlockRequests, 0u);
}

TEST_F(LockedKeychainTest, OpenedItGivesTheToken) {
  userIsAskedAndAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_FALSE(keychain->isLocked());
}

TEST_F(LockedKeychainTest, AQuestionOnScreenIsNotAskedAgain) {
  keychain->requestUnlock();
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.unlockRequests, 1u);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, RefusedItCountsAsEmptyUntilTheRefusalIsTakenBack) {
  userIsAskedAndAnswers(false);
  EXPECT_THAT(answers, ElementsAre(false));
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_FALSE(keychain->wantsUnlock());
  keychain->forgetRefusal();
  EXPECT_TRUE(keychain->isLocked());
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.unlockRequests, 2u);
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

// --- What waits to be written --------------------------------------------------------------------

TEST_F(LockedKeychainTest, ATokenToBeSavedWaitsInMemory) {
  keychain->keychainSave("U");
  EXPECT_EQ(keychain->keychainLoad(), "U");
  EXPECT_EQ(store.refreshToken(), "T");
  EXPECT_FALSE(keychain->isLocked());
  EXPECT_TRUE(keychain->wantsUnlock());
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, ARemovalWaitsAsWell) {
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  EXPECT_EQ(store.refreshToken(), "T");
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), std::nullopt);
}

TEST_F(LockedKeychainTest, OnlyTheNewestOrderWaits) {
  keychain->keychainDelete();
  keychain->keychainSave("U");
  keychain->keychainSave("V");
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), "V");
  store.locked = true;
  keychain->keychainSave("W");
  keychain->keychainDelete();
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), std::nullopt);
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt) << "nor does the token wait any longer";
}

TEST_F(LockedKeychainTest, ATokenThatWaitsOutlivesARefusalAndTheStore) {
  keychain->keychainSave("U");
  userIsAskedAndAnswers(false);
  EXPECT_EQ(keychain->keychainLoad(), "U");
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_FALSE(keychain->wantsUnlock());
  store.missing = true;
  store.othersLock();
  EXPECT_EQ(keychain->keychainLoad(), "U");
}

// --- Opened by others ----------------------------------------------------------------------------

TEST_F(LockedKeychainTest, OpenedByOthersBeforeAnyQuestionItGivesTheToken) {
  EXPECT_TRUE(keychain->isLocked());
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

TEST_F(LockedKeychainTest, OpenedByOthersAfterARefusalItGivesTheToken) {
  userIsAskedAndAnswers(false);
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(false, true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_TRUE(keychain->holdsToken());
  store.othersLock();
  EXPECT_TRUE(keychain->isLocked()) << "the refusal was of the time before";
}

TEST_F(LockedKeychainTest, TheQuestionStillOnScreenThenIsAnsweredToNobody) {
  for (const bool answer : {true, false}) {
    store.locked = true;
    startAgain();
    answers.clear();
    keychain->requestUnlock();
    store.othersOpen();
    EXPECT_THAT(answers, ElementsAre(true));
    store.userAnswers(answer);
    EXPECT_THAT(answers, ElementsAre(true));
    EXPECT_EQ(keychain->keychainLoad(), "T");
  }
}

TEST_F(LockedKeychainTest, LockedAgainMeanwhileTheQuestionStillOnScreenCounts) {
  for (const bool answer : {true, false}) {
    store.locked = true;
    startAgain();
    keychain->requestUnlock();
    store.othersOpen();
    store.othersLock();
    EXPECT_TRUE(keychain->wantsUnlock());
    answers.clear();
    store.userAnswers(answer);
    EXPECT_THAT(answers, ElementsAre(answer));
  }
}

TEST_F(KeychainTest, ATokenThatComesWithinReachLaterIsReported) {
  EXPECT_FALSE(keychain->holdsToken());
  store.othersWrite("T");
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

TEST_F(LockedKeychainTest, AReportFromAStoreThatIsStillLockedChangesNothing) {
  keychain->requestUnlock();
  store.othersLock();
  EXPECT_THAT(answers, IsEmpty());
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, OpenedByOthersItTakesWhatWaits) {
  keychain->keychainSave("U");
  store.othersOpen();
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, ARefusalAfterOthersOpenedTheStoreIsNone) {
  for (const bool reports : {true, false}) {
    store.locked = true;
    store.reportsChanges = reports;
    startAgain();
    answers.clear();
    EXPECT_TRUE(keychain->isLocked());
    keychain->requestUnlock();
    store.locked = false;  // a report, if any, is still on its way
    store.userAnswers(false);
    EXPECT_THAT(answers, ElementsAre(true));
    EXPECT_EQ(keychain->keychainLoad(), "T");
  }
}

TEST_F(LockedKeychainTest, AnAnswerAfterTheEndReachesNobody) {
  keychain->requestUnlock();
  keychain.reset();
  store.userAnswers(true);
  EXPECT_THAT(answers, IsEmpty());
}

}  // namespace
}  // namespace notewick
