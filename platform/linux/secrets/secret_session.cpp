#include "platform/linux/secrets/secret_session.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <utility>

namespace notewick {

using namespace secret_service;

namespace {

constexpr const char* CONTENT_TYPE = "text/plain";

}  // namespace

SecretSession::SecretSession(SecretSession&& other) noexcept
    : path_(std::exchange(other.path_, {})), cipher_(std::move(other.cipher_)) {}

SecretSession::~SecretSession() {
  if (path_.path().isEmpty()) return;
  QDBusMessage close =
      QDBusMessage::createMethodCall(NAME, path_.path(), SESSION_INTERFACE, "Close");
  close.setAutoStartService(false);
  QDBusConnection::sessionBus().send(close);
}

SecretServiceAnswer<SecretOnBus> SecretSession::wrapped(const std::string& secret) const {
  if (!cipher_) return SecretOnBus{path_, {}, QByteArray::fromStdString(secret), CONTENT_TYPE};
  const auto sealed = cipher_->seal(secret);
  if (!sealed) return tl::unexpected(SecretServiceFailure::refused);
  return SecretOnBus{path_, sealed->parameters, sealed->value, CONTENT_TYPE};
}

SecretServiceAnswer<std::string> SecretSession::unwrapped(const SecretOnBus& secret) const {
  if (!cipher_) return secret.value.toStdString();
  auto opened = cipher_->open({secret.parameters, secret.value});
  if (!opened) return tl::unexpected(SecretServiceFailure::refused);
  return std::move(*opened);
}

}  // namespace notewick
