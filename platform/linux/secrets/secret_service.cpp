#include "platform/linux/secrets/secret_service.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QVariantMap>
#include <algorithm>
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
  return start(WALLET_NAME)
      .and_then([this] { return isRunning(); })
      .and_then([](bool running) -> SecretServiceAnswer<void> {
        if (running) return {};
        return tl::unexpected(SecretServiceFailure::unanswered);
      });
}

SecretServiceAnswer<void> SecretServiceConversation::start(const char* program) const {
  return answerOf(startMessage(program), static_cast<int>(end_.remainingTime())).map(nothingMore);
}

SecretServiceAnswer<SecretItems> SecretServiceConversation::search(const SecretKey& key) const {
  return send(searchMessage(key)).map(itemsIn);
}

SecretServiceAnswer<std::string> SecretServiceConversation::secretOf(
    const QDBusObjectPath& item) const {
  const auto session = openSession();
  if (!session) return tl::unexpected(session.error());
  return call(item.path(), ITEM_INTERFACE, "GetSecret", {QVariant::fromValue(session->path())})
      .and_then([&](const QVariantList& answer) { return session->unwrapped(secretIn(answer)); });
}

SecretServiceAnswer<void> SecretServiceConversation::replaceSecret(
    const QDBusObjectPath& item, const std::string& secret) const {
  const auto session = openSession();
  if (!session) return tl::unexpected(session.error());
  return session->wrapped(secret)
      .and_then([&](const SecretOnBus& wrapped) {
        return call(item.path(), ITEM_INTERFACE, "SetSecret", {QVariant::fromValue(wrapped)});
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
                                                            const std::string& secret) const {
  const QVariantMap properties{{"org.freedesktop.Secret.Item.Label", "VELK Notewick"},
                               {"org.freedesktop.Secret.Item.Attributes", attributesOf(key)}};
  constexpr bool REPLACING = true;
  const auto session = openSession();
  if (!session) return tl::unexpected(session.error());
  return session->wrapped(secret)
      .and_then([&](const SecretOnBus& wrapped) {
        return call(collection.path(), COLLECTION_INTERFACE, "CreateItem",
                    {properties, QVariant::fromValue(wrapped), REPLACING});
      })
      .and_then(doneWithoutPrompt);
}

SecretServiceAnswer<SecretSession> SecretServiceConversation::openSession() const {
  SecretCipher cipher;
  const auto opened =
      call(PATH, SERVICE_INTERFACE, "OpenSession",
           {SecretCipher::ALGORITHM, QVariant::fromValue(QDBusVariant(cipher.publicKey()))});
  if (!opened && opened.error() == SecretServiceFailure::refused) return openPlainSession();
  if (!opened) return tl::unexpected(opened.error());
  const auto theirs = opened->value(0).value<QDBusVariant>().variant();
  const bool agreed =
      theirs.typeId() == QMetaType::QByteArray && cipher.agree(theirs.toByteArray());
  SecretSession session(opened->value(1).value<QDBusObjectPath>(), std::move(cipher));
  if (!agreed) return tl::unexpected(SecretServiceFailure::refused);
  return session;
}

SecretServiceAnswer<SecretSession> SecretServiceConversation::openPlainSession() const {
  return call(PATH, SERVICE_INTERFACE, "OpenSession",
              {"plain", QVariant::fromValue(QDBusVariant(QString()))})
      .map([](const QVariantList& opened) {
        return SecretSession(opened.value(1).value<QDBusObjectPath>(), std::nullopt);
      });
}

SecretServiceAnswer<QVariantList> SecretServiceConversation::call(
    const QString& object, const QString& interface, const QString& member,
    const QVariantList& arguments) const {
  registerSecretTypes();
  QDBusMessage message = QDBusMessage::createMethodCall(NAME, object, interface, member);
  message.setArguments(arguments);
  return send(message);
}

SecretServiceAnswer<QVariantList> SecretServiceConversation::send(QDBusMessage message) const {
  if (end_.hasExpired()) return tl::unexpected(SecretServiceFailure::unanswered);
  message.setAutoStartService(false);
  return answerOf(message, static_cast<int>(end_.remainingTime()));
}

}  // namespace notewick
