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

const QString serverName = QStringLiteral("org.freedesktop.Notifications");
const QString serverPath = QStringLiteral("/org/freedesktop/Notifications");

/// A notification server that answers nothing and keeps what it was asked for.
class NotificationServer : public QDBusVirtualObject {
 public:
  NotificationServer() {
    bus_.registerVirtualObject(serverPath, this);
    bus_.registerService(serverName);
  }
  ~NotificationServer() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*from*/) override {
    messages.push_back(message);
    return true;
  }

  std::vector<QDBusMessage> messages;

 private:
  QDBusConnection bus_ =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, "notification server");
};

TEST(DBusNotifierTest, AsksTheServiceForANotificationWithASound) {
  NotificationServer server;
  DBusNotifier().show("Log it? — Tobias Hargreave", "12 min on screen");
  ASSERT_TRUE(waitUntil([&] { return server.messages.size() == 1; }));
  const QDBusMessage notify = server.messages.front();
  EXPECT_EQ(notify.interface(), serverName);
  EXPECT_EQ(notify.member(), "Notify");
  EXPECT_EQ(notify.signature(), "susssasa{sv}i");
  EXPECT_EQ(notify.arguments().at(0), "VELK Notewick");
  EXPECT_EQ(notify.arguments().at(2), "tools.velk.notewick");
  EXPECT_EQ(notify.arguments().at(3), QString::fromUtf8("Log it? — Tobias Hargreave"));
  EXPECT_EQ(notify.arguments().at(4), "12 min on screen");
  const auto hints = qdbus_cast<QVariantMap>(notify.arguments().at(6));
  EXPECT_EQ(hints.value("sound-name"), "message-new-instant");
  EXPECT_EQ(hints.value("desktop-entry"), "tools.velk.notewick");
  EXPECT_EQ(notify.arguments().at(7), -1);
}

TEST(DBusNotifierTest, EscapesMarkupInTheBodyAndNothingElse) {
  NotificationServer server;
  DBusNotifier().show("<b>R&D</b>", R"(<b>R&D</b> &amp; "it's" \n)");
  ASSERT_TRUE(waitUntil([&] { return server.messages.size() == 1; }));
  EXPECT_EQ(server.messages[0].arguments().at(3), "<b>R&D</b>");
  EXPECT_EQ(server.messages[0].arguments().at(4),
            R"(&lt;b&gt;R&amp;D&lt;/b&gt; &amp;amp; "it's" \n)");
}

TEST(DBusNotifierTest, DoesNotWaitForAServerThatDoesNotAnswer) {
  NotificationServer server;
  QElapsedTimer time;
  time.start();
  for (int count = 0; count < 20; ++count) DBusNotifier().show("title", "body");
  EXPECT_LT(time.elapsed(), 20'000) << "a call that waits for its answer takes 25 seconds";
  EXPECT_TRUE(waitUntil([&] { return server.messages.size() == 20; }));
}

}  // namespace
}  // namespace notewick
