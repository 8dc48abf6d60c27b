#include "platform/linux/secrets/secret_bus.h"

#include <gtest/gtest.h>

#include <QDBusMessage>

namespace notewick {
namespace {

QDBusError error(const QString& name) {
  return QDBusError(QDBusMessage::createError(name, "as the bus words it"));
}

SecretServiceFailure failure(const QString& name) {
  return failureOf(error(name));
}

TEST(SecretServiceFailureTest, NoAnswerInTimeIsUnanswered) {
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.NoReply"), SecretServiceFailure::unanswered);
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.Timeout"), SecretServiceFailure::unanswered);
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.TimedOut"), SecretServiceFailure::unanswered);
}

TEST(SecretServiceFailureTest, ACallRefusedForLoadIsUnansweredAndCanBeMadeAgain) {
  for (const char* name :
       {"org.freedesktop.DBus.Error.LimitsExceeded", "org.freedesktop.DBus.Error.NoMemory"}) {
    EXPECT_EQ(failure(name), SecretServiceFailure::unanswered) << name;
    EXPECT_TRUE(isRefusedForLoad(error(name))) << name;
  }
}

TEST(SecretServiceFailureTest, NobodyThereIsMissing) {
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.ServiceUnknown"), SecretServiceFailure::missing);
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.NameHasNoOwner"), SecretServiceFailure::missing);
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.Disconnected"), SecretServiceFailure::missing);
  EXPECT_EQ(failure("org.freedesktop.DBus.Error.NoServer"), SecretServiceFailure::missing);
}

TEST(SecretServiceFailureTest, ALockIsALock) {
  EXPECT_EQ(failure("org.freedesktop.Secret.Error.IsLocked"), SecretServiceFailure::locked);
}

TEST(SecretServiceFailureTest, EveryOtherErrorIsANo) {
  for (const char* name :
       {"org.freedesktop.DBus.Error.Failed", "org.freedesktop.DBus.Error.AccessDenied",
        "org.freedesktop.DBus.Error.UnknownMethod", "org.freedesktop.Secret.Error.NoSuchObject"}) {
    EXPECT_EQ(failure(name), SecretServiceFailure::refused) << name;
    EXPECT_FALSE(isRefusedForLoad(error(name))) << name;
  }
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
