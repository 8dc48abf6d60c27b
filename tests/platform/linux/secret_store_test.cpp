#include <QElapsedTimer>
#include <QFile>
#include <csignal>

#include "tests/platform/linux/secret_store_fixture.h"

namespace notewick {
namespace {

QByteArray bytesOf(const std::string& path) {
  QFile file(QString::fromStdString(path));
  return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(GnomeKeyringTest, SavingReplacesAndNeverAddsASecondAndRemovingLeavesNone) {
  keyringIsOpen();
  for (const std::string secret : {"s3cr3t \xc3\xa9 \"x\"", "", "a much longer third one"}) {
    EXPECT_EQ(store_.save(TOKEN, secret), SecretWrite::done);
    EXPECT_EQ(loaded(), "found " + secret);
    const auto items = SecretServiceConversation(BUSY_MACHINE).search(TOKEN);
    ASSERT_TRUE(items.has_value());
    EXPECT_THAT(items->unlocked, SizeIs(1));
  }
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::done);
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(GnomeKeyringTest, SecretsOfOtherServicesAndAccountsAreOthers) {
  keyringIsOpen();
  EXPECT_EQ(store_.save({"other.service", TOKEN.account}, "a"), SecretWrite::done);
  EXPECT_EQ(store_.save({TOKEN.service, "other"}, "b"), SecretWrite::done);
  EXPECT_EQ(loaded(), "absent");
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::done);
  EXPECT_EQ(described(store_.load({TOKEN.service, "other"})), "found b");
}

TEST_F(GnomeKeyringTest, ASecretThatIsNoTextCountsAsAbsent) {
  keyringIsOpen();
  EXPECT_EQ(store_.save(TOKEN, "\xff\xfe"), SecretWrite::done);
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(GnomeKeyringTest, WithoutTheSecretALockedOrMissingCollectionSaysAbsentButCannotSave) {
  const auto check = [this] {
    EXPECT_EQ(loaded(), "absent");
    EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
    EXPECT_EQ(store_.remove(TOKEN), SecretWrite::done);
  };
  keyringWasNeverMade();
  check();
  serviceEnds();
  keyringIsOpen();
  userLocksIt();
  check();
}

TEST_F(GnomeKeyringTest, TheSecretIsInClearNeitherOnTheBusNorInAnyFile) {
  keyringIsOpen();
  const std::string recorded = LinuxSession::current().home() + "/recorded";
  {
    const ChildProcess recorder({"sh", "-c", "exec dbus-monitor --binary --session >" + recorded});
    EXPECT_TRUE(waitUntil([&] {
      return std::filesystem::exists(recorded) && std::filesystem::file_size(recorded) > 0;
    }));
    EXPECT_EQ(store_.save(TOKEN, "n0t-in-clear"), SecretWrite::done);
    EXPECT_EQ(loaded(), "found n0t-in-clear");
    EXPECT_EQ(store_.state({"the.last", "question"}), SecretState::absent);
    EXPECT_TRUE(waitUntil([&] { return bytesOf(recorded).contains("the.last"); }));
  }
  EXPECT_TRUE(bytesOf(recorded).contains("CreateItem"));
  EXPECT_TRUE(bytesOf(recorded).contains("GetSecret"));
  ChildProcess search({"grep", "-rlF", "n0t-in-clear", LinuxSession::current().home()});
  EXPECT_EQ(search.readLine(), "") << "neither there nor in any other file";
}

TEST_F(ScriptedServiceTest, ALockedStoreIsNeitherReadNorWrittenNorUnlockedByLooking) {
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  control("Lock");
  EXPECT_EQ(store_.state(TOKEN), SecretState::locked);
  EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::locked);
  EXPECT_FALSE(calls().contains("Unlock"));
  EXPECT_FALSE(calls().contains("Prompt"));
}

TEST_F(ScriptedServiceTest, AStoreThatLocksBetweenSearchAndUseIsLocked) {
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  control("LockAfterSearch");
  EXPECT_EQ(loaded(), "locked");
  control("Unlock");
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
  control("Unlock");
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::locked);
}

TEST_F(ScriptedServiceTest, WhetherItIsThereTakesOneSearch) {
  serviceIs();
  EXPECT_EQ(store_.state(TOKEN), SecretState::absent);
  control("Put", {tokenAttributes(), "s3cr3t"});
  EXPECT_EQ(store_.state(TOKEN), SecretState::found);
  EXPECT_EQ(calls(), (QStringList{"SearchItems", "SearchItems"}));
}

TEST_F(ScriptedServiceTest, AServiceThatOffersNoEncryptionIsServedWithoutAndSessionsAreClosed) {
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  EXPECT_EQ(loaded(), "found s3cr3t");
  EXPECT_EQ(calls().count("OpenSession"), 4) << "to save and to load, first in vain";
  EXPECT_EQ(calls().count("Close"), 2);
}

TEST_F(ScriptedServiceTest, UnlockingAsksTheUserAndEndsWithTheStoreOpen) {
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  control("Lock");
  EXPECT_EQ(loaded(), "locked");
  unlock();
  EXPECT_THAT(answers_, IsEmpty());
  waitForPrompt();
  catchUp();
  EXPECT_THAT(answers_, IsEmpty());
  control("CompletePrompt");
  EXPECT_TRUE(isOpened());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ScriptedServiceTest, ADismissedQuestionEndsWithTheStoreLocked) {
  serviceIs("--locked");
  unlock();
  userAnswers("DismissPrompt");
  EXPECT_FALSE(isOpened());
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
}

TEST_F(ScriptedServiceTest, AnOpenStoreIsUnlockedWithoutAQuestion) {
  serviceIs();
  unlock();
  EXPECT_TRUE(isOpened());
  EXPECT_FALSE(calls().contains("Prompt"));
}

TEST_F(ScriptedServiceTest, ACollectionIsMadeForASecretThatWaitsAndForNothingElse) {
  serviceIs("--empty");
  EXPECT_EQ(loaded(), "absent");
  unlock();
  EXPECT_TRUE(isOpened());
  EXPECT_FALSE(calls().contains("CreateCollection"));
  answers_.clear();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::locked);
  unlock();
  EXPECT_TRUE(isOpened());
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
}

TEST_F(ScriptedServiceTest, AnItemIsOpenedAlsoWhereNoCollectionIsTheDefault) {
  serviceIs("--empty");
  control("Put", {tokenAttributes(), "s3cr3t"});
  control("Lock");
  EXPECT_EQ(loaded(), "locked");
  unlock();
  userAnswers("CompletePrompt");
  EXPECT_TRUE(isOpened());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ScriptedServiceTest, TheSameQuestionIsAskedAgainAfterARefusalButNotTwiceAtOnce) {
  serviceIs("--locked");
  unlock();
  waitForPrompt();
  unlock();
  catchUp();
  EXPECT_EQ(openPrompts(), 1U);
  control("DismissPrompt");
  EXPECT_TRUE(waitUntil([this] { return answers_.size() == 2; }));
  unlock();
  userAnswers("CompletePrompt");
  EXPECT_TRUE(waitUntil([this] { return answers_.size() == 3; }));
  EXPECT_THAT(answers_, ElementsAre(false, false, true));
}

TEST_F(ScriptedServiceTest, TheQuestionIsNeverTakenBack) {
  serviceIs("--locked");
  {
    SecretServiceStore shortLived;
    shortLived.unlock([](bool) { ADD_FAILURE() << "completed after the end"; });
    waitForPrompt();
  }
  catchUp();
  EXPECT_EQ(openPrompts(), 1U);
  EXPECT_FALSE(calls().contains("Dismiss"));
  control("CompletePrompt");
  catchUp();
}

TEST_F(ScriptedServiceTest, AServiceThatEndsOrIsReplacedWhileItAsksEndsTheQuestion) {
  serviceIs("--locked");
  unlock();
  waitForPrompt();
  serviceEnds();
  EXPECT_FALSE(isOpened());
  answers_.clear();
  serviceIs("--locked");
  unlock();
  waitForPrompt();
  const auto successor = startSuccessor();
  EXPECT_FALSE(isOpened());
}

TEST_F(ScriptedServiceTest, ADismissalAfterOthersOpenedTheStoreIsStillADismissal) {
  serviceIs("--locked");
  unlock();
  waitForPrompt();
  control("Unlock");
  catchUp();
  EXPECT_THAT(answers_, IsEmpty());
  control("DismissPrompt");
  EXPECT_TRUE(waitUntil([this] { return !answers_.empty(); }));
  service_.reset();
  catchUp();
  EXPECT_THAT(answers_, ElementsAre(false));
}

TEST_F(ScriptedServiceTest, AServiceThatHangsIsWaitedForOnceAndCountsAsLocked) {
  static_assert(SECRET_SERVICE_PATIENCE <= std::chrono::milliseconds(250), "nobody feels it");
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  service_->signal(SIGSTOP);
  QElapsedTimer away;
  away.start();
  for (int asked = 0; asked < 3; ++asked) EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::locked);
  EXPECT_LT(away.elapsed(), 5000) << "five times the patience of this fixture";
  unlock();
  catchUp();
  EXPECT_THAT(answers_, IsEmpty());
  service_->signal(SIGCONT);
  EXPECT_TRUE(isOpened());
  EXPECT_LE(calls().count("SearchItems"), 3) << "to save, once in vain, and to unlock";
  EXPECT_EQ(loaded(), "found s3cr3t");
}

}  // namespace
}  // namespace notewick
