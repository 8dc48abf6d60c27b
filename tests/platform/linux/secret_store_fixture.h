#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/secret_store.h"
#include "platform/linux/secrets/secret_bus.h"
#include "tests/support/linux_session.h"

namespace notewick {

inline const SecretKey TOKEN{"tools.velk.notewick", "refresh-token"};

/// How an outcome reads in a test: "found secret", "absent", "locked".
inline std::string described(const SecretLookup& lookup) {
  switch (lookup.state) {
    case SecretState::found:
      return "found " + lookup.secret;
    case SecretState::absent:
      return "absent" + lookup.secret;
    case SecretState::locked:
      return "locked" + lookup.secret;
    case SecretState::noStore:
      return "no store" + lookup.secret;
  }
  return "";
}

/// The patience of a test with a service that does answer.
inline constexpr std::chrono::seconds BUSY_MACHINE{1};

/// A store, and the secret service that a test has started.
class SecretStoreTest : public testing::Test {
 protected:
  SecretStoreTest() { registerSecretTypes(); }

  [[nodiscard]] std::string loaded() { return described(store_.load(TOKEN)); }

  void startAndWait(const std::vector<std::string>& command, const std::string& input = "") {
    service_ = std::make_unique<ChildProcess>(command, input);
    ASSERT_TRUE(waitForOwner(secret_service::NAME));
  }
  void serviceEnds() {
    service_.reset();
    ASSERT_TRUE(waitForOwner(secret_service::NAME, false));
  }

  /// Calls the service, as another program would.
  static QVariantList ask(const QString& path, const QString& interface, const QString& member,
                          const QVariantList& arguments = {}) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(secret_service::NAME, path, interface, member);
    message.setArguments(arguments);
    const QDBusMessage answer = QDBusConnection::sessionBus().call(message);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer.arguments();
  }

  [[nodiscard]] static QVariant tokenAttributes() {
    return QVariant::fromValue(
        SecretAttributes{{"service", "tools.velk.notewick"}, {"account", "refresh-token"}});
  }

  void watch() {
    ASSERT_TRUE(store_.watch([this] { ++reports_; }));
  }
  /// Whether the store reports a change, after those that have been asked for.
  [[nodiscard]] bool reportsAChange() {
    const bool reported = waitUntil([this] { return reports_ > 0; });
    reports_ = 0;
    return reported;
  }
  /// Whether it reports none: a report that is due comes before the end of a longer timer.
  [[nodiscard]] bool staysSilent() {
    catchUp();
    bool later = false;
    QTimer::singleShot(40, Qt::PreciseTimer, [&later] { later = true; });
    EXPECT_TRUE(waitUntil([&later] { return later; }));
    return std::exchange(reports_, 0) == 0;
  }

  ~SecretStoreTest() override {
    service_.reset();
    EXPECT_TRUE(waitForOwner(secret_service::NAME, false));
  }

  std::unique_ptr<ChildProcess> service_;
  SecretServiceStore store_{BUSY_MACHINE};
  int reports_ = 0;
};

/// With GNOME Keyring, open with an empty password unless a test says otherwise.
class GnomeKeyringTest : public SecretStoreTest {
 protected:
  GnomeKeyringTest() {
    std::filesystem::remove_all(LinuxSession::current().home() + "/.local/share/keyrings");
  }

  void keyringIsOpen() {
    startAndWait({"gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"},
                 "\n");
  }
  void keyringWasNeverMade() {
    startAndWait({"gnome-keyring-daemon", "--foreground", "--components=secrets"});
  }
  static void userLocksIt() {
    ask(secret_service::PATH, secret_service::SERVICE_INTERFACE, "Lock",
        {QVariant::fromValue(QList{LOGIN})});
  }
  /// Without a question to the user, as a login does.
  static void loginOpensIt() {
    const auto session = ask(secret_service::PATH, secret_service::SERVICE_INTERFACE, "OpenSession",
                             {"plain", QVariant::fromValue(QDBusVariant(""))});
    const SecretOnBus password{session.value(1).value<QDBusObjectPath>(), {}, "\n", "text/plain"};
    ask(secret_service::PATH, "org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface",
        "UnlockWithMasterPassword", {QVariant::fromValue(LOGIN), QVariant::fromValue(password)});
  }

  static inline const QDBusObjectPath LOGIN{"/org/freedesktop/secrets/collection/login"};
};

/// With a service whose user is the test.
class ScriptedServiceTest : public SecretStoreTest {
 protected:
  void serviceIs(const std::string& state = "") {
    startAndWait({"/usr/bin/python3", FAKE_SECRET_SERVICE, state});
  }

  static QVariantList control(const QString& member, const QVariantList& arguments = {}) {
    return ask("/control", "tools.velk.notewick.FakeSecrets", member, arguments);
  }
  [[nodiscard]] static uint openPrompts() { return control("OpenPrompts").value(0).toUInt(); }
  [[nodiscard]] static QStringList calls() { return control("Calls").value(0).toStringList(); }

  void unlock() {
    store_.unlock([this](bool opened) { answers_.push_back(opened); });
  }
  static void waitForPrompt() {
    EXPECT_TRUE(waitUntil([] { return openPrompts() == 1; }));
  }
  /// As soon as the service asks: "CompletePrompt" or "DismissPrompt".
  static void userAnswers(const QString& how) {
    waitForPrompt();
    control(how);
  }
  /// Another service, which takes the name from the first.
  static std::unique_ptr<ChildProcess> startSuccessor() {
    return std::make_unique<ChildProcess>(
        std::vector<std::string>{"/usr/bin/python3", FAKE_SECRET_SERVICE, "--replace"});
  }
  /// The only answer to unlock(), as soon as it is there.
  [[nodiscard]] bool isOpened() {
    EXPECT_TRUE(waitUntil([this] { return !answers_.empty(); }));
    catchUp();
    EXPECT_EQ(answers_.size(), 1U);
    return !answers_.empty() && answers_.front();
  }

  std::vector<bool> answers_;
};

}  // namespace notewick
