#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <csignal>
#include <filesystem>

#include "tests/platform/linux/secret_store_fixture.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Without a service, unless the bus can start one.
class ActivationTest : public SecretStoreTest {
 protected:
  ~ActivationTest() override {
    std::filesystem::remove(fileOf(secret_service::NAME));
    std::filesystem::remove(fileOf(secret_service::WALLET_NAME));
    endOwnerOf(secret_service::NAME);
    endOwnerOf(secret_service::WALLET_NAME);
  }

  static void busStarts(const std::string& command, const char* name = secret_service::NAME) {
    LinuxSession::current().makeActivatable(name, command);
  }
  static void busStartsKWallet(const std::string& takesPartAfter, const std::string& startsAfter) {
    busStarts("/bin/sh -c 'sleep " + startsAfter +
                  "; exec /usr/bin/python3 " FAKE_SECRET_SERVICE " --wallet=" + takesPartAfter +
                  "'",
              secret_service::WALLET_NAME);
  }

  std::vector<bool> unlocked() {
    std::vector<bool> answers;
    store_.unlock([&](bool opened) { answers.push_back(opened); });
    EXPECT_THAT(answers, IsEmpty());
    EXPECT_TRUE(waitUntil([&] { return !answers.empty(); }));
    return answers;
  }

 private:
  static std::string fileOf(const std::string& name) {
    return LinuxSession::current().home() + "/services/" + name + ".service";
  }
  static void endOwnerOf(const QString& name) {
    const auto bus = QDBusConnection::sessionBus().interface();
    const auto id = bus->servicePid(name);
    if (!id.isValid()) return;
    kill(static_cast<pid_t>(id.value()), SIGTERM);
    EXPECT_TRUE(waitForOwner(name, false));
  }
};

TEST_F(ActivationTest, WithoutAServiceThereIsNoStoreUntilOneAppears) {
  EXPECT_EQ(store_.state(TOKEN), SecretState::noStore);
  EXPECT_EQ(loaded(), "no store");
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::noStore);
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::noStore);
  EXPECT_THAT(unlocked(), ElementsAre(false));
  startAndWait({"/usr/bin/python3", FAKE_SECRET_SERVICE});
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::done);
  EXPECT_EQ(loaded(), "found s3cr3t");
}

TEST_F(ActivationTest, AServiceThatTheBusFailsToStartIsTriedOnce) {
  const std::string tries = LinuxSession::current().home() + "/tries";
  busStarts("/bin/sh -c 'echo x >> " + tries + "; exit 1'");
  EXPECT_EQ(loaded(), "no store");
  EXPECT_EQ(loaded(), "no store");
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::noStore);
  EXPECT_EQ(std::filesystem::file_size(tries), 2U);
}

TEST_F(ActivationTest, AServiceThatHasGoneIsStartedAgainForTheUserOnly) {
  startAndWait({"/usr/bin/python3", FAKE_SECRET_SERVICE});
  EXPECT_EQ(loaded(), "absent");
  busStarts("/usr/bin/python3 " FAKE_SECRET_SERVICE);
  serviceEnds();
  EXPECT_EQ(store_.state(TOKEN), SecretState::locked);
  EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(store_.save(TOKEN, "new"), SecretWrite::locked);
  EXPECT_EQ(store_.remove(TOKEN), SecretWrite::locked);
  EXPECT_TRUE(waitForOwner(secret_service::NAME, false));
  EXPECT_THAT(unlocked(), ElementsAre(true));
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(ActivationTest, AServiceThatIsSlowToStartCountsAsLockedUntilItIsThere) {
  busStarts("/bin/sh -c 'sleep 2; exec /usr/bin/python3 " FAKE_SECRET_SERVICE "'");
  EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(loaded(), "locked");
  EXPECT_THAT(unlocked(), ElementsAre(true));
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(ActivationTest, AKWalletThatIsSlowToStartCountsAsLockedUntilItIsThere) {
  busStartsKWallet("0.3", "1.2");
  EXPECT_EQ(loaded(), "locked");
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::locked);
  EXPECT_THAT(unlocked(), ElementsAre(true));
  EXPECT_EQ(loaded(), "absent");
}

TEST_F(ActivationTest, AKWalletThatIsNoSecretServiceIsGivenUp) {
  busStartsKWallet("60", "0");
  EXPECT_EQ(loaded(), "locked");
  EXPECT_THAT(unlocked(), ElementsAre(false));
  EXPECT_EQ(loaded(), "no store");
  EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::noStore);
}

}  // namespace
}  // namespace notewick
