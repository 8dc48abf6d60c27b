#include "platform/linux/secrets/secret_unlock.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#include <utility>

#include "platform/linux/secrets/secret_bus.h"

namespace notewick {

using namespace secret_service;

SecretUnlock::SecretUnlock(const QList<QDBusObjectPath>& items, Missing missing,
                           std::function<void(bool opened)> ended)
    : objects_(items),
      missing_(missing),
      ended_(std::move(ended)),
      watcher_(NAME, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &SecretUnlock::ownerChanged);
  if (QDBusConnection::sessionBus().isConnected()) {
    call(PATH, SERVICE_INTERFACE, "ReadAlias", {"default"}, &SecretUnlock::aliasRead);
  } else {
    QMetaObject::invokeMethod(
        this, [this] { end(false); }, Qt::QueuedConnection);
  }
}

void SecretUnlock::call(const QString& object, const QString& interface, const QString& member,
                        const QVariantList& arguments,
                        void (SecretUnlock::*then)(const QDBusMessage&)) {
  QDBusMessage message = QDBusMessage::createMethodCall(NAME, object, interface, member);
  message.setArguments(arguments);
  callPatiently(message, this, [this, then](const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage) return end(false);
    (this->*then)(answer);
  });
}

void SecretUnlock::aliasRead(const QDBusMessage& answer) {
  const auto collection = answer.arguments().value(0).value<QDBusObjectPath>();
  const bool isMissing = collection.path() == NOTHING;
  if (isMissing && missing_ == Missing::isMade) {
    const QVariantMap properties{{"org.freedesktop.Secret.Collection.Label", "Login"}};
    call(PATH, SERVICE_INTERFACE, "CreateCollection", {properties, "default"},
         &SecretUnlock::unlockAnswered);
    return;
  }
  if (!isMissing) objects_.prepend(collection);
  call(PATH, SERVICE_INTERFACE, "Unlock", {QVariant::fromValue(objects_)},
       &SecretUnlock::unlockAnswered);
}

// Both questions are answered by what is done already and the prompt for the rest.
void SecretUnlock::unlockAnswered(const QDBusMessage& answer) {
  const auto prompt = answer.arguments().value(1).value<QDBusObjectPath>();
  if (prompt.path() == NOTHING) {
    end(true);
    return;
  }
  QDBusConnection::sessionBus().connect(NAME, prompt.path(), PROMPT_INTERFACE, "Completed", this,
                                        SLOT(promptCompleted(bool, QDBusVariant)));
  const QString noParentWindow;
  call(prompt.path(), PROMPT_INTERFACE, "Prompt", {noParentWindow}, &SecretUnlock::promptShown);
}

void SecretUnlock::promptShown(const QDBusMessage& /*answer*/) {}

void SecretUnlock::promptCompleted(bool dismissed, const QDBusVariant& /*result*/) {
  end(!dismissed);
}

void SecretUnlock::ownerChanged(const QString& /*service*/, const QString& before,
                                const QString& /*after*/) {
  if (!before.isEmpty()) end(false);
}

void SecretUnlock::end(bool opened) {
  if (const auto ended = std::exchange(ended_, nullptr)) ended(opened);
}

}  // namespace notewick

#include "moc_secret_unlock.cpp"
