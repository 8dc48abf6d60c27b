#include "platform/linux/secrets/secret_bus.h"

#include <gtest/gtest.h>

#include <QDBusMessage>

namespace notewick {
namespace {

QDBusError error(const QString& name) {
  return QDBusError(QDBusMessage::createError(name, "as the bus words it"));
}

TEST(SecretServiceFailureTest, EachBusErrorHasItsMeaning) {
  using enum SecretServiceFailure;
  for (const auto& [name, kind] :
       {std::pair("org.freedesktop.DBus.Error.NoReply", unanswered),
        std::pair("org.freedesktop.DBus.Error.Timeout", unanswered),
        std::pair("org.freedesktop.DBus.Error.TimedOut", unanswered),
        std::pair("org.freedesktop.DBus.Error.LimitsExceeded", unanswered),
        std::pair("org.freedesktop.DBus.Error.NoMemory", unanswered),
        std::pair("org.freedesktop.DBus.Error.ServiceUnknown", missing),
        std::pair("org.freedesktop.DBus.Error.NameHasNoOwner", missing),
        std::pair("org.freedesktop.DBus.Error.Disconnected", missing),
        std::pair("org.freedesktop.DBus.Error.NoServer", missing),
        std::pair("org.freedesktop.Secret.Error.IsLocked", locked),
        std::pair("org.freedesktop.DBus.Error.Failed", refused),
        std::pair("org.freedesktop.DBus.Error.AccessDenied", refused),
        std::pair("org.freedesktop.DBus.Error.UnknownMethod", refused),
        std::pair("org.freedesktop.Secret.Error.NoSuchObject", refused)}) {
    EXPECT_EQ(failureOf(error(name)), kind) << name;
  }
}

TEST(SecretServiceFailureTest, OnlyACallRefusedForLoadCanBeMadeAgain) {
  EXPECT_TRUE(isRefusedForLoad(error("org.freedesktop.DBus.Error.LimitsExceeded")));
  EXPECT_TRUE(isRefusedForLoad(error("org.freedesktop.DBus.Error.NoMemory")));
  EXPECT_FALSE(isRefusedForLoad(error("org.freedesktop.DBus.Error.Failed")));
}

// Read as a list of paths, a list of numbers has no end.
TEST(SecretAnswers, OfOtherTypesCountAsEmpty) {
  QDBusArgument numbers;
  numbers << QList<int>{1, 2};
  for (const auto& answer : {QVariantList(), QVariantList{"text", 7u},
                             QVariantList{QVariant::fromValue(numbers), QStringList("text")}}) {
    const auto items = itemsIn(answer);
    EXPECT_TRUE(items.unlocked.isEmpty() && items.locked.isEmpty());
    EXPECT_TRUE(secretIn(answer).value.isEmpty());
  }
}

}  // namespace
}  // namespace notewick
