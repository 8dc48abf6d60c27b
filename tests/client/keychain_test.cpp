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
    answers.clear();
  }

  /// The token or "no token", or "a locked token"; and " to open" where opening the store would
  /// help.
  std::string has() {
    const auto token = keychain->keychainLoad();
    const bool locked = keychain->isLocked();
    EXPECT_EQ(keychain->holdsToken(), token || locked);
    EXPECT_EQ(keychain->hasNoStore(), store.missing);
    return token.value_or(locked ? "a locked token" : "no token") +
           (keychain->wantsUnlock() ? " to open" : "");
  }

  void userIsAskedAndAnswers(bool open) {
    keychain->requestUnlock();
    store.userAnswers(open);
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
  EXPECT_EQ(has(), "U");
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_EQ(store.size(), 1u);
  keychain->keychainDelete();
  EXPECT_EQ(has(), "no token");
  EXPECT_EQ(store.size(), 0u);
}

TEST_F(KeychainTest, AFailedWriteIsSwallowed) {
  store.failWrites = true;
  keychain->keychainSave("T");
  EXPECT_EQ(has(), "no token");
  store.othersWrite("T");
  keychain->keychainDelete();
  EXPECT_EQ(has(), "T");
}

// --- No store ------------------------------------------------------------------------------------

class KeychainWithoutAStoreTest : public KeychainTest {
 protected:
  KeychainWithoutAStoreTest() { store.missing = true; }
};

TEST_F(KeychainWithoutAStoreTest, ATokenIsThereUntilItIsDeletedOrTheProgramStartsAgain) {
  EXPECT_EQ(has(), "no token");
  keychain->keychainSave("T");
  EXPECT_EQ(has(), "T");
  keychain->keychainDelete();
  EXPECT_EQ(has(), "no token");
  keychain->keychainSave("T");
  startAgain();
  EXPECT_EQ(has(), "no token");
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesTakesTheToken) {
  keychain->keychainSave("T");
  store.comes();
  EXPECT_EQ(store.refreshToken(), "T");
  EXPECT_EQ(has(), "T");
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesLockedIsOneToOpen) {
  keychain->keychainSave("T");
  store.locked = true;
  store.comes();
  EXPECT_EQ(has(), "T to open");
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), "T");
}

TEST_F(KeychainWithoutAStoreTest, AStoreThatComesAfterASignOutKeepsWhatItHolds) {
  keychain->keychainSave("T");
  keychain->keychainDelete();
  store.setRefreshToken("earlier");
  store.comes();
  EXPECT_EQ(has(), "earlier");
}

// --- Remembered ----------------------------------------------------------------------------------

class RememberedTokenTest : public KeychainTest {
 protected:
  RememberedTokenTest() { store.setRefreshToken("T"); }

  void looksTwice() {
    for (int look = 0; look < 2; ++look) EXPECT_EQ(has(), "T");
  }
};

TEST_F(RememberedTokenTest, WhetherThereIsATokenIsAskedOnceAndTheTokenNotFetched) {
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_TRUE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 1u);
  EXPECT_EQ(store.fetches, 0u);
}

TEST_F(RememberedTokenTest, WhatWasWrittenIsNotAskedForAtAll) {
  keychain->keychainSave("T");
  looksTwice();
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 0u);
}

TEST_F(RememberedTokenTest, ATokenIsFetchedOnceUntilTheStoreReportsAChange) {
  looksTwice();
  EXPECT_EQ(store.fetches, 1u);
  store.othersWrite("U");
  EXPECT_EQ(has(), "U");
  store.othersRemove();
  EXPECT_EQ(has(), "no token");
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
  LockedKeychainTest() { startsLocked(); }

  void startsLocked() {
    store.setRefreshToken("T");
    store.locked = true;
    startAgain();
  }
};

TEST_F(LockedKeychainTest, LookingNeverAsksAndOpenedItGivesTheToken) {
  EXPECT_EQ(has(), "a locked token to open");
  EXPECT_EQ(store.unlockRequests, 0u);
  userIsAskedAndAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(has(), "T");
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
  EXPECT_EQ(has(), "no token");
  keychain->forgetRefusal();
  EXPECT_EQ(has(), "a locked token to open");
  userIsAskedAndAnswers(true);
  EXPECT_EQ(has(), "T");
}

// --- What waits to be written --------------------------------------------------------------------

TEST_F(LockedKeychainTest, ATokenToBeSavedWaitsInMemory) {
  keychain->keychainSave("U");
  EXPECT_EQ(has(), "U to open");
  EXPECT_EQ(store.refreshToken(), "T");
  userIsAskedAndAnswers(true);
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_EQ(has(), "U");
}

TEST_F(LockedKeychainTest, ARemovalWaitsAsWell) {
  keychain->keychainDelete();
  EXPECT_EQ(has(), "no token to open");
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
  EXPECT_EQ(has(), "no token") << "nor does the token wait any longer";
}

TEST_F(LockedKeychainTest, ATokenThatWaitsOutlivesARefusalAndTheStore) {
  keychain->keychainSave("U");
  userIsAskedAndAnswers(false);
  EXPECT_EQ(has(), "U");
  store.missing = true;
  store.othersLock();
  EXPECT_EQ(keychain->keychainLoad(), "U");
}

// --- Opened by others ----------------------------------------------------------------------------

TEST_F(LockedKeychainTest, OpenedByOthersBeforeAnyQuestionItGivesTheToken) {
  EXPECT_TRUE(keychain->isLocked());
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(has(), "T");
}

TEST_F(KeychainTest, AStoreThatHungAndHoldsNoTokenAfterAllIsReportedOnce) {
  store.hangs = true;
  EXPECT_TRUE(keychain->isLocked());
  store.othersLock();
  EXPECT_THAT(answers, IsEmpty()) << "it still hangs";
  store.answersAgain();
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(has(), "no token");
}

TEST_F(KeychainTest, AStoreThatHungIsNotReportedWhileTheQuestionIsOpenNorWhereATokenWasSeen) {
  store.hangs = true;
  keychain->requestUnlock();
  EXPECT_TRUE(keychain->isLocked());
  store.answersAgain();
  EXPECT_THAT(answers, IsEmpty());
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true)) << "that is the answer";
  keychain->keychainSave("T");
  store.hangs = true;
  store.othersRemove();
  EXPECT_TRUE(keychain->isLocked());
  store.answersAgain();
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, OpenedByOthersAfterARefusalItGivesTheToken) {
  userIsAskedAndAnswers(false);
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(false, true));
  EXPECT_EQ(has(), "T");
  store.othersLock();
  EXPECT_TRUE(keychain->isLocked()) << "the refusal was of the time before";
}

TEST_F(LockedKeychainTest, OpenedByOthersItTakesWhatWaits) {
  keychain->keychainSave("U");
  store.othersOpen();
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(has(), "U");
}

TEST_F(LockedKeychainTest, TheQuestionStillOnScreenThenIsAnsweredToNobody) {
  for (const bool answer : {true, false}) {
    startsLocked();
    keychain->requestUnlock();
    store.othersOpen();
    EXPECT_THAT(answers, ElementsAre(true));
    store.userAnswers(answer);
    EXPECT_THAT(answers, ElementsAre(true));
    EXPECT_EQ(has(), "T");
  }
}

TEST_F(LockedKeychainTest, LockedAgainMeanwhileTheQuestionStillOnScreenCounts) {
  for (const bool answer : {true, false}) {
    startsLocked();
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
  EXPECT_EQ(has(), "T");
}

TEST_F(LockedKeychainTest, AReportFromAStoreThatIsStillLockedChangesNothing) {
  keychain->requestUnlock();
  store.othersLock();
  EXPECT_THAT(answers, IsEmpty());
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, ARefusalAfterOthersOpenedTheStoreIsNone) {
  for (const bool reports : {true, false}) {
    store.reportsChanges = reports;
    startsLocked();
    EXPECT_TRUE(keychain->isLocked());
    keychain->requestUnlock();
    store.locked = false;  // a report, if any, is still on its way
    store.userAnswers(false);
    EXPECT_THAT(answers, ElementsAre(true));
    EXPECT_EQ(has(), "T");
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
