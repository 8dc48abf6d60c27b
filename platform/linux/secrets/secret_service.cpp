#include "platform/linux/secrets/secret_service.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QVariantMap>
#include <algorithm>
#include <thread>
#include <utility>

namespace notewick {
namespace {

using namespace secret_service;

SecretServiceAnswer<QVariantList> answerOf(const QDBusMessage& message, int patience) {
  const QDBusMessage reply =
      QDBusConnection::sessionBus().call(message, QDBus::Block, std::max(patience, 1));
  if (reply.type() == QDBusMessage::ReplyMessage) return reply.arguments();
  return tl::unexpected(failureOf(QDBusError(reply)));
}

QVariant plainSecret(const QDBusObjectPath& session, const QByteArray& secret) {
  return QVariant::fromValue(SecretOnBus{session, {}, secret, "text/plain"});
}

// A service that has to ask the user first answers with the path of a prompt, which we do not show:
// then nothing was done.
SecretServiceAnswer<void> doneWithoutPrompt(const QVariantList& answer) {
  if (answer.value(answer.size() - 1).value<QDBusObjectPath>().path() == NOTHING) return {};
  return tl::unexpected(SecretServiceFailure::refused);
}

void nothingMore(const QVariantList& /*answer*/) {}

}  // namespace

SecretServiceAnswer<bool> SecretServiceConversation::isRunning() const {
  QDBusMessage question =
      QDBusMessage::createMethodCall(BUS_NAME, BUS_PATH, BUS_NAME, "NameHasOwner");
  question << NAME;
  return answerOf(question, static_cast<int>(end_.remainingTime()))
      .map([](const QVariantList& answer) { return answer.value(0).toBool(); });
}

SecretServiceAnswer<void> SecretServiceConversation::start() const {
  // Every store is started by the service's name but KWallet, which the bus knows by its own only.
  const auto started = start(NAME);
  if (started || started.error() == SecretServiceFailure::unanswered) return started;
  return start(WALLET_NAME).and_then([this] { return appearance(); });
}

SecretServiceAnswer<void> SecretServiceConversation::start(const char* program) const {
  return answerOf(startMessage(program), static_cast<int>(end_.remainingTime())).map(nothingMore);
}

SecretServiceAnswer<void> SecretServiceConversation::appearance() const {
  constexpr std::chrono::milliseconds NAP{10};
  while (!end_.hasExpired()) {
    const auto running = isRunning();
    if (!running) return tl::unexpected(running.error());
    if (*running) return {};
    std::this_thread::sleep_for(NAP);
  }
  return tl::unexpected(SecretServiceFailure::unanswered);
}

SecretServiceAnswer<SecretItems> SecretServiceConversation::search(const SecretKey& key) const {
  return send(searchMessage(key)).map(itemsIn);
}

SecretServiceAnswer<QByteArray> SecretServiceConversation::secretOf(
    const QDBusObjectPath& item) const {
  return callInSession(item.path(), ITEM_INTERFACE, "GetSecret",
                       [](const QDBusObjectPath& session) {
                         return QVariantList{QVariant::fromValue(session)};
                       })
      .map([](const QVariantList& answer) { return secretIn(answer).value; });
}

SecretServiceAnswer<void> SecretServiceConversation::replaceSecret(const QDBusObjectPath& item,
                                                                   const QByteArray& secret) const {
  return callInSession(item.path(), ITEM_INTERFACE, "SetSecret",
                       [&](const QDBusObjectPath& session) {
                         return QVariantList{plainSecret(session, secret)};
                       })
      .map(nothingMore);
}

SecretServiceAnswer<void> SecretServiceConversation::remove(const QDBusObjectPath& item) const {
  return call(item.path(), ITEM_INTERFACE, "Delete", {}).and_then(doneWithoutPrompt);
}

SecretServiceAnswer<std::optional<QDBusObjectPath>> SecretServiceConversation::defaultCollection()
    const {
  return call(PATH, SERVICE_INTERFACE, "ReadAlias", {"default"})
      .map([](const QVariantList& answer) {
        const auto collection = answer.value(0).value<QDBusObjectPath>();
        return collection.path() == NOTHING ? std::nullopt : std::optional(collection);
      });
}

SecretServiceAnswer<bool> SecretServiceConversation::isLocked(
    const QDBusObjectPath& collection) const {
  return call(collection.path(), PROPERTIES_INTERFACE, "Get", {COLLECTION_INTERFACE, "Locked"})
      .map([](const QVariantList& answer) {
        return answer.value(0).value<QDBusVariant>().variant().toBool();
      });
}

SecretServiceAnswer<void> SecretServiceConversation::create(const QDBusObjectPath& collection,
                                                            const SecretKey& key,
                                                            const QByteArray& secret) const {
  const QVariantMap properties{{"org.freedesktop.Secret.Item.Label", "VELK Notewick"},
                               {"org.freedesktop.Secret.Item.Attributes", attributesOf(key)}};
  constexpr bool REPLACING = true;
  return callInSession(collection.path(), COLLECTION_INTERFACE, "CreateItem",
                       [&](const QDBusObjectPath& session) {
                         return QVariantList{properties, plainSecret(session, secret), REPLACING};
                       })
      .and_then(doneWithoutPrompt);
}

SecretServiceAnswer<QVariantList> SecretServiceConversation::callInSession(
    const QString& object, const QString& interface, const QString& member,
    const std::function<QVariantList(const QDBusObjectPath& session)>& arguments) const {
  const auto opened = call(PATH, SERVICE_INTERFACE, "OpenSession",
                           {"plain", QVariant::fromValue(QDBusVariant(QString()))});
  if (!opened) return opened;
  const auto session = opened->value(1).value<QDBusObjectPath>();
  const auto answer = call(object, interface, member, arguments(session));
  QDBusConnection::sessionBus().send(
      QDBusMessage::createMethodCall(NAME, session.path(), SESSION_INTERFACE, "Close"));
  return answer;
}

SecretServiceAnswer<QVariantList> SecretServiceConversation::call(
    const QString& object, const QString& interface, const QString& member,
    const QVariantList& arguments) const {
  registerSecretTypes();
  QDBusMessage message = QDBusMessage::createMethodCall(NAME, object, interface, member);
  message.setArguments(arguments);
  return send(std::move(message));
}

SecretServiceAnswer<QVariantList> SecretServiceConversation::send(QDBusMessage message) const {
  if (end_.hasExpired()) return tl::unexpected(SecretServiceFailure::unanswered);
  message.setAutoStartService(false);
  return answerOf(message, static_cast<int>(end_.remainingTime()));
}

}  // namespace notewick
