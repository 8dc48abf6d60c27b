#include <QElapsedTimer>
#include <csignal>

#include "tests/platform/linux/secret_store_fixture.h"

namespace notewick {
namespace {

using testing::IsEmpty;

TEST_F(GnomeKeyringTest, WhatOthersWriteOrRemoveIsReported) {
  keyringIsOpen();
  watch();
  const std::vector<std::string> words{"service", TOKEN.service, "account", TOKEN.account};
  const auto secretTool = [&](std::vector<std::string> command, const std::string& input = "") {
    command.insert(command.end(), words.begin(), words.end());
    return ChildProcess(command, input).wait();
  };
  ASSERT_EQ(secretTool({"secret-tool", "store", "--label=x"}, "theirs"), 0);
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "found theirs");
  ASSERT_EQ(secretTool({"secret-tool", "clear"}), 0);
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(GnomeKeyringTest, AStoreThatOthersLockOrOpenIsReported) {
  keyringIsOpen();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  watch();
  userLocksIt();
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "locked");
  loginOpensIt();
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

constexpr const char* COLLECTION_PATH = "/org/freedesktop/secrets/collection/any";

TEST_F(ScriptedServiceTest, EverySignalOfACollectionOrAnItemIsReported) {
  serviceIs();
  watch();
  for (const char* signal : {"CollectionCreated", "CollectionChanged", "CollectionDeleted"}) {
    control("Emit", {secret_service::PATH, secret_service::SERVICE_INTERFACE, signal});
    EXPECT_TRUE(reportsAChange()) << signal;
  }
  for (const char* signal : {"ItemCreated", "ItemChanged", "ItemDeleted"}) {
    control("Emit", {COLLECTION_PATH, secret_service::COLLECTION_INTERFACE, signal});
    EXPECT_TRUE(reportsAChange()) << signal;
  }
  control("EmitChange", {COLLECTION_PATH, secret_service::COLLECTION_INTERFACE});
  EXPECT_TRUE(reportsAChange());
  EXPECT_THAT(calls(), IsEmpty()) << "watching asks nothing";
}

TEST_F(ScriptedServiceTest, WhatChangesNoAnswerIsNotReported) {
  serviceIs();
  watch();
  control("EmitChange", {COLLECTION_PATH, secret_service::ITEM_INTERFACE});
  control("Emit", {"/prompt", secret_service::PROMPT_INTERFACE, "Completed"});
  EXPECT_TRUE(staysSilent());
}

TEST_F(ScriptedServiceTest, WhatHappensAtOnceIsReportedOnce) {
  serviceIs();
  watch();
  control("Put", {tokenAttributes(), "s3cr3t"});
  control("Lock");
  control("Unlock");
  EXPECT_TRUE(reportsAChange());
  EXPECT_TRUE(staysSilent());
}

TEST_F(ScriptedServiceTest, TheLastToWatchIsTheOneToHear) {
  serviceIs();
  ASSERT_TRUE(store_.watch([] { ADD_FAILURE() << "the first is still told"; }));
  watch();
  control("Lock");
  EXPECT_TRUE(reportsAChange());
}

TEST_F(ScriptedServiceTest, AServiceThatComesOrGoesOrIsReplacedIsReported) {
  watch();
  serviceIs();
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "absent");
  serviceEnds();
  EXPECT_TRUE(reportsAChange());
  serviceIs();
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "absent");
  const auto successor = startSuccessor();
  EXPECT_TRUE(reportsAChange());
}

TEST_F(ScriptedServiceTest, AServiceThatAnswersAgainIsReported) {
  serviceIs();
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  watch();
  service_->signal(SIGSTOP);
  EXPECT_EQ(store_.state(TOKEN), SecretState::locked);
  EXPECT_TRUE(staysSilent());
  service_->signal(SIGCONT);
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ScriptedServiceTest, AServiceThatAnswersPingsOnlyIsStillWaitedFor) {
  serviceIs();
  control("Put", {tokenAttributes(), "s3cr3t"});
  control("HoldSearches");
  watch();
  EXPECT_EQ(store_.state(TOKEN), SecretState::locked);
  ask(secret_service::PATH, "org.freedesktop.DBus.Peer", "Ping");
  EXPECT_TRUE(staysSilent());
  control("ReleaseSearches");
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ScriptedServiceTest, AnAnswerThatIsFollowedByNoneIsReportedMoreRarely) {
  serviceIs();
  control("Put", {tokenAttributes(), "s3cr3t"});
  control("Refuse", {"org.freedesktop.DBus.Error.NoReply", "GetSecret"});
  EXPECT_EQ(loaded(), "locked");
  ASSERT_TRUE(store_.watch([this] {
    ++reports_;
    EXPECT_EQ(loaded(), "locked");
  }));
  EXPECT_TRUE(waitUntil([this] { return reports_ == 1; }));
  QElapsedTimer pause;
  pause.start();
  EXPECT_TRUE(waitUntil([this] { return reports_ == 2; }));
  EXPECT_GE(pause.elapsed(), 300);
}

TEST_F(ScriptedServiceTest, ACallRefusedForLoadIsNoAnswer) {
  serviceIs();
  control("Put", {tokenAttributes(), "s3cr3t"});
  control("Refuse", {"org.freedesktop.DBus.Error.LimitsExceeded", ""});
  watch();
  EXPECT_EQ(store_.state(TOKEN), SecretState::locked);
  EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::locked);
  EXPECT_TRUE(staysSilent());
  control("Refuse", {"", ""});
  EXPECT_TRUE(reportsAChange());
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ScriptedServiceTest, AQuestionToTheUserIsNotGivenUpForLoad) {
  serviceIs("--locked");
  control("Refuse", {"org.freedesktop.DBus.Error.NoMemory", ""});
  unlock();
  EXPECT_TRUE(waitUntil([] { return !calls().isEmpty(); }));
  catchUp();
  EXPECT_THAT(answers_, IsEmpty());
  control("Refuse", {"", ""});
  userAnswers("CompletePrompt");
  EXPECT_TRUE(isOpened());
}

}  // namespace
}  // namespace notewick
