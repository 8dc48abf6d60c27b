#include "platform/linux/notifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>

#include "tests/support/linux_session.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const QString SERVER_NAME = QStringLiteral("org.freedesktop.Notifications");
const QString SERVER_PATH = QStringLiteral("/org/freedesktop/Notifications");

/// A notification server that keeps what it was asked for. It numbers notifications from 1.
class ScriptedServer : public QDBusVirtualObject {
 public:
  /// Without capabilities it answers nothing at all.
  explicit ScriptedServer(std::optional<QStringList> capabilities = QStringList{"actions"})
      : capabilities_(std::move(capabilities)) {
    bus_.registerVirtualObject(SERVER_PATH, this);
    bus_.registerService(SERVER_NAME);
  }
  ~ScriptedServer() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override {
    const bool isNotify = message.member() == "Notify";
    if (isNotify) shown.push_back(message.arguments());
    if (!capabilities_) return true;
    const QVariant id = static_cast<uint>(shown.size());
    from.send(message.createReply(isNotify ? id : QVariant(*capabilities_)));
    return true;
  }

  /// The user picks an action of a notification.
  void reports(uint id, const QString& action = "default") {
    QDBusMessage signal = QDBusMessage::createSignal(SERVER_PATH, SERVER_NAME, "ActionInvoked");
    bus_.send(signal << id << action);
    catchUp();
  }
  [[nodiscard]] QStringList actions(std::size_t notification) const {
    return shown.at(notification).at(5).toStringList();
  }

  std::vector<QVariantList> shown;

 private:
  std::optional<QStringList> capabilities_;
  QDBusConnection bus_ =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, "notification server");
};

class DBusNotifierTest : public testing::Test {
 protected:
  /// Shows a notification that writes its name down when it is clicked; returns when it is there.
  void shows(const ScriptedServer& server, const std::string& name) {
    const auto before = server.shown.size();
    notifier_.show(name, "body", [this, name] { clicks_.push_back(name); });
    ASSERT_TRUE(waitUntil([&] { return server.shown.size() == before + 1; }));
    catchUp();
  }

  DBusNotifier notifier_;
  std::vector<std::string> clicks_;
};

TEST_F(DBusNotifierTest, AsksTheServiceForANotificationWithASoundThatCanBeHeldBack) {
  const ScriptedServer server;
  shows(server, "Log it? — Tobias Hargreave");
  const QVariantList& notify = server.shown.front();
  ASSERT_THAT(notify, SizeIs(8));
  EXPECT_EQ(notify.at(0), "VELK Notewick");
  EXPECT_EQ(notify.at(2), "tools.velk.notewick");
  EXPECT_EQ(notify.at(3), QString::fromUtf8("Log it? — Tobias Hargreave"));
  EXPECT_EQ(notify.at(4), "body");
  const auto hints = qdbus_cast<QVariantMap>(notify.at(6));
  EXPECT_EQ(hints.value("sound-name"), "message-new-instant");
  EXPECT_EQ(hints.value("desktop-entry"), "tools.velk.notewick");
  EXPECT_EQ(hints.value("category"), "x-velk.casework");
  EXPECT_EQ(hints.value("urgency").userType(), QMetaType::UChar);
  EXPECT_EQ(hints.value("urgency").toInt(), 1) << "normal";
  EXPECT_EQ(notify.at(7), -1);
}

TEST_F(DBusNotifierTest, EscapesMarkupInTheBodyAndNothingElse) {
  const ScriptedServer server;
  notifier_.show("<b>R&D</b>", R"(<b>R&D</b> &amp; "it's" \n)", nullptr);
  ASSERT_TRUE(waitUntil([&] { return server.shown.size() == 1; }));
  EXPECT_EQ(server.shown[0].at(3), "<b>R&D</b>");
  EXPECT_EQ(server.shown[0].at(4), R"(&lt;b&gt;R&amp;D&lt;/b&gt; &amp;amp; "it's" \n)");
}

TEST_F(DBusNotifierTest, DoesNotWaitForAServerThatDoesNotAnswer) {
  const ScriptedServer server{std::nullopt};
  QElapsedTimer time;
  time.start();
  for (int count = 0; count < 20; ++count) notifier_.show("title", "body", nullptr);
  EXPECT_LT(time.elapsed(), 20'000) << "a call that waits for its answer takes 25 seconds";
  EXPECT_TRUE(waitUntil([&] { return server.shown.size() == 20; }));
}

TEST_F(DBusNotifierTest, AClickCarriesOutWhatBelongsToThatNotificationOnce) {
  ScriptedServer server;
  shows(server, "first");
  shows(server, "second");
  EXPECT_THAT(server.actions(0), ElementsAre("default", "Open"));
  server.reports(2);
  server.reports(2);
  EXPECT_THAT(clicks_, ElementsAre("second"));
  server.reports(1);
  EXPECT_THAT(clicks_, ElementsAre("second", "first"));
}

TEST_F(DBusNotifierTest, WhatIsNoClickOnANotificationOfThisRunIsPassedOver) {
  ScriptedServer server;
  shows(server, "first");
  server.reports(2);
  server.reports(1, "other");
  const auto other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "other");
  QDBusMessage signal = QDBusMessage::createSignal(SERVER_PATH, SERVER_NAME, "ActionInvoked");
  other.send(signal << 1U << "default");
  QDBusConnection::disconnectFromBus("other");
  catchUp();
  EXPECT_THAT(clicks_, SizeIs(0));
}

TEST_F(DBusNotifierTest, NoActionIsSentToAServerThatKnowsNoneOrForNothingToDo) {
  {
    const ScriptedServer server{QStringList{"body"}};
    shows(server, "first");
    EXPECT_THAT(server.actions(0), SizeIs(0));
  }
  ASSERT_TRUE(waitForOwner(SERVER_NAME, false));
  const ScriptedServer server;
  notifier_.show("title", "body", nullptr);
  ASSERT_TRUE(waitUntil([&] { return server.shown.size() == 1; }));
  EXPECT_THAT(server.actions(0), SizeIs(0));
}

TEST_F(DBusNotifierTest, AServerThatStartsAnewIsAskedAnewAndItsNumbersAreItsOwn) {
  {
    const ScriptedServer server;
    shows(server, "before");
  }
  ASSERT_TRUE(waitForOwner(SERVER_NAME, false));
  ScriptedServer server;
  catchUp();
  server.reports(1);
  EXPECT_THAT(clicks_, SizeIs(0));
  shows(server, "after");
  EXPECT_THAT(server.actions(0), ElementsAre("default", "Open"));
  server.reports(1);
  EXPECT_THAT(clicks_, ElementsAre("after"));
}

}  // namespace
}  // namespace notewick
