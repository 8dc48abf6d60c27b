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
  void asks() { keychain->requestUnlock(); }

  FakeClock clock;
  Trace trace;
  FakeMainLoop loop{clock, trace};
  FakeSecretStore store{loop};
  std::shared_ptr<Keychain> keychain;
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

// --- Remembered ----------------------------------------------------------------------------------

class RememberedTokenTest : public KeychainTest {
 protected:
  RememberedTokenTest() { store.setRefreshToken("T"); }

  void looksOften() {
    for (int look = 0; look < 5; ++look) {
      EXPECT_TRUE(keychain->holdsToken());
      EXPECT_EQ(keychain->keychainLoad(), "T");
      EXPECT_FALSE(keychain->isLocked());
    }
  }
};

TEST_F(RememberedTokenTest, WhetherThereIsATokenIsAskedOnceAndTheTokenNotFetched) {
  for (int look = 0; look < 5; ++look) EXPECT_TRUE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 1u);
  EXPECT_EQ(store.fetches, 0u);
}

TEST_F(RememberedTokenTest, ATokenThatWasReadIsNotFetchedAgain) {
  looksOften();
  EXPECT_EQ(store.fetches, 1u);
}

TEST_F(RememberedTokenTest, ATokenThatWasWrittenIsNotFetchedAtAll) {
  keychain->keychainSave("T");
  looksOften();
  EXPECT_EQ(store.looks, 0u);
}

TEST_F(RememberedTokenTest, ThatThereIsNoneIsRemembered) {
  keychain->keychainDelete();
  for (int look = 0; look < 5; ++look) EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(store.looks, 0u);
}

TEST_F(RememberedTokenTest, ATokenThatOthersWriteReplacesIt) {
  looksOften();
  store.othersWrite("U");
  EXPECT_EQ(keychain->keychainLoad(), "U");
}

TEST_F(RememberedTokenTest, ATokenThatOthersRemoveIsGone) {
  looksOften();
  store.othersRemove();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(keychain->keychainLoad(), std::nullopt);
}

TEST_F(RememberedTokenTest, AChangeThatConcernsNobodyTellsNobody) {
  looksOften();
  store.othersWrite("U");
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(RememberedTokenTest, AStoreThatReportsNothingIsLookedIntoEachTimeWithoutFetching) {
  store.reportsChanges = false;
  startAgain();
  looksOften();
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

TEST_F(LockedKeychainTest, AStoreThatFailsLaterKeepsTheTokenInMemory) {
  keychain->keychainSave("U");
  store.missing = true;
  store.othersLock();
  EXPECT_EQ(keychain->keychainLoad(), "U");
}

TEST_F(LockedKeychainTest, ARemovalWaitsAsWell) {
  keychain->keychainDelete();
  EXPECT_FALSE(keychain->holdsToken());
  EXPECT_EQ(store.refreshToken(), "T");
  asks();
  store.userAnswers(true);
  EXPECT_EQ(store.refreshToken(), std::nullopt);
}

// --- Opened by others ----------------------------------------------------------------------------

TEST_F(LockedKeychainTest, OpenedByOthersWhileTheQuestionIsOpenItGivesTheToken) {
  asks();
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

TEST_F(LockedKeychainTest, TheQuestionThatIsStillOnScreenThenIsAnsweredToNobody) {
  for (const bool answer : {true, false}) {
    store.locked = true;
    startAgain();
    asks();
    store.othersOpen();
    answers.clear();
    store.userAnswers(answer);
    EXPECT_THAT(answers, IsEmpty());
    EXPECT_EQ(keychain->keychainLoad(), "T");
  }
}

TEST_F(LockedKeychainTest, OpenedByOthersAfterARefusalItGivesTheToken) {
  asks();
  store.userAnswers(false);
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(false, true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
  EXPECT_TRUE(keychain->holdsToken());
}

TEST_F(LockedKeychainTest, OpenedByOthersBeforeAnyQuestionItGivesTheToken) {
  EXPECT_TRUE(keychain->isLocked());
  store.othersOpen();
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, LockedAgainMeanwhileTheQuestionStillOnScreenCounts) {
  for (const bool answer : {true, false}) {
    store.locked = true;
    startAgain();
    asks();
    store.othersOpen();
    store.othersLock();
    EXPECT_TRUE(keychain->wantsUnlock());
    answers.clear();
    store.userAnswers(answer);
    EXPECT_THAT(answers, ElementsAre(answer));
  }
}

TEST_F(KeychainTest, ATokenThatComesWithinReachLaterIsTold) {
  EXPECT_FALSE(keychain->holdsToken());
  store.othersWrite("T");
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

TEST_F(LockedKeychainTest, AReportFromAStoreThatIsStillLockedChangesNothing) {
  asks();
  store.othersLock();
  EXPECT_THAT(answers, IsEmpty());
  store.userAnswers(true);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(LockedKeychainTest, OpenedByOthersItTakesTheTokenThatWaits) {
  keychain->keychainSave("U");
  store.othersOpen();
  EXPECT_EQ(store.refreshToken(), "U");
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_FALSE(keychain->wantsUnlock());
}

TEST_F(LockedKeychainTest, OpenedByOthersItLosesTheTokenToBeRemoved) {
  keychain->keychainDelete();
  store.othersOpen();
  EXPECT_EQ(store.refreshToken(), std::nullopt);
  EXPECT_FALSE(keychain->holdsToken());
}

TEST_F(LockedKeychainTest, ARefusalAfterOthersOpenedAStoreThatReportsNothingIsNone) {
  store.reportsChanges = false;
  startAgain();
  asks();
  store.locked = false;
  store.userAnswers(false);
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(keychain->keychainLoad(), "T");
}

// --- Removals ------------------------------------------------------------------------------------

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
