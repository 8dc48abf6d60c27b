#include "platform/linux/secret_unlock.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>
#include <limits>
#include <utility>

#include "platform/linux/secret_service.h"

namespace notewick {

using namespace secretService;

SecretUnlock::SecretUnlock(const QList<QDBusObjectPath>& items, Missing missing,
                           std::function<void(bool opened)> ended)
    : objects_(items),
      missing_(missing),
      ended_(std::move(ended)),
      watcher_(name, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForUnregistration) {
  connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { end(false); });
  if (QDBusConnection::sessionBus().isConnected()) {
    call(path, serviceInterface, "ReadAlias", {"default"}, &SecretUnlock::aliasRead);
  } else {
    QMetaObject::invokeMethod(
        this, [this] { end(false); }, Qt::QueuedConnection);
  }
}

void SecretUnlock::call(const QString& object, const QString& interface, const QString& member,
                        const QVariantList& arguments,
                        void (SecretUnlock::*then)(const QDBusMessage&)) {
  constexpr int asLongAsItTakes = std::numeric_limits<int>::max();
  QDBusMessage message = QDBusMessage::createMethodCall(name, object, interface, member);
  message.setArguments(arguments);
  const auto answer = QDBusConnection::sessionBus().asyncCall(message, asLongAsItTakes);
  auto* const watcher = new QDBusPendingCallWatcher(answer, this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, then] {
    watcher->deleteLater();
    const QDBusMessage reply = watcher->reply();
    if (reply.type() == QDBusMessage::ReplyMessage) {
      (this->*then)(reply);
    } else {
      end(false);
    }
  });
}

void SecretUnlock::aliasRead(const QDBusMessage& answer) {
  const auto collection = answer.arguments().value(0).value<QDBusObjectPath>();
  const bool isMissing = collection.path() == nothing;
  if (isMissing && missing_ == Missing::isMade) {
    const QVariantMap properties{{"org.freedesktop.Secret.Collection.Label", "Login"}};
    call(path, serviceInterface, "CreateCollection", {properties, "default"},
         &SecretUnlock::unlockAnswered);
    return;
  }
  if (!isMissing) objects_.prepend(collection);
  call(path, serviceInterface, "Unlock", {QVariant::fromValue(objects_)},
       &SecretUnlock::unlockAnswered);
}

// Both questions are answered by what is done already and the prompt for the rest.
void SecretUnlock::unlockAnswered(const QDBusMessage& answer) {
  const auto prompt = answer.arguments().value(1).value<QDBusObjectPath>();
  if (prompt.path() == nothing) {
    end(true);
    return;
  }
  QDBusConnection::sessionBus().connect(name, prompt.path(), promptInterface, "Completed", this,
                                        SLOT(promptCompleted(bool, QDBusVariant)));
  const QString noParentWindow;
  call(prompt.path(), promptInterface, "Prompt", {noParentWindow}, &SecretUnlock::promptShown);
}

void SecretUnlock::promptShown(const QDBusMessage& /*answer*/) {}

void SecretUnlock::promptCompleted(bool dismissed, const QDBusVariant& /*result*/) {
  end(!dismissed);
}

void SecretUnlock::end(bool opened) {
  if (const auto ended = std::exchange(ended_, nullptr)) ended(opened);
}

}  // namespace notewick
