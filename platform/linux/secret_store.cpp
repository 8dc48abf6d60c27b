#include "platform/linux/secret_store.h"

#include <QStringDecoder>
#include <utility>

#include "platform/linux/secret_service_wait.h"
#include "platform/linux/secret_unlock.h"

namespace notewick {
namespace {

bool isUtf8(const QByteArray& text) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(text);
  return !decoder.hasError();
}

using LookupAnswer = SecretServiceAnswer<SecretLookup>;
using WriteAnswer = SecretServiceAnswer<SecretWrite>;

LookupAnswer lookUp(const SecretServiceConversation& service, const SecretItems& items) {
  if (!items.unlocked.isEmpty()) {
    return service.secretOf(items.unlocked.front()).map([](const QByteArray& secret) {
      if (!isUtf8(secret)) return SecretLookup{SecretState::absent, ""};
      return SecretLookup{SecretState::found, secret.toStdString()};
    });
  }
  return SecretLookup{items.locked.isEmpty() ? SecretState::absent : SecretState::locked, ""};
}

WriteAnswer create(const SecretServiceConversation& service, const SecretKey& key,
                   const QByteArray& secret) {
  const auto collection = service.defaultCollection();
  if (!collection) return tl::unexpected(collection.error());
  if (!*collection) return SecretWrite::locked;
  const auto locked = service.isLocked(**collection);
  if (!locked) return tl::unexpected(locked.error());
  if (*locked) return SecretWrite::locked;
  return service.create(**collection, key, secret).map([] { return SecretWrite::done; });
}

WriteAnswer removeAll(const SecretServiceConversation& service, const SecretItems& items) {
  for (const QDBusObjectPath& item : items.unlocked) {
    const auto removed = service.remove(item);
    if (!removed) return tl::unexpected(removed.error());
  }
  return items.locked.isEmpty() ? SecretWrite::done : SecretWrite::locked;
}

WriteAnswer write(const SecretServiceConversation& service, SecretItems items, const SecretKey& key,
                  const QByteArray& secret) {
  if (items.unlocked.isEmpty()) {
    return items.locked.isEmpty() ? create(service, key, secret) : SecretWrite::locked;
  }
  const QDBusObjectPath kept = items.unlocked.takeFirst();
  return service.replaceSecret(kept, secret).and_then([&] { return removeAll(service, items); });
}

bool opensLater(SecretServiceFailure failure) {
  return failure == SecretServiceFailure::unanswered || failure == SecretServiceFailure::locked;
}

}  // namespace

SecretServiceStore::SecretServiceStore() = default;
SecretServiceStore::~SecretServiceStore() = default;

SecretState SecretServiceStore::state(const SecretKey& key) {
  return load(key).state;
}

SecretLookup SecretServiceStore::load(const SecretKey& key) {
  const SecretServiceConversation service;
  const auto lookup =
      find(service, key).and_then([&](const SecretItems& items) { return lookUp(service, items); });
  if (lookup) return *lookup;
  noteFailure(lookup.error(), key);
  return {opensLater(lookup.error()) ? SecretState::locked : SecretState::absent, ""};
}

SecretWrite SecretServiceStore::save(const SecretKey& key, const std::string& secret) {
  const SecretWrite written = trySave(key, secret);
  saveWaits_ = written == SecretWrite::locked;
  return written;
}

SecretWrite SecretServiceStore::trySave(const SecretKey& key, const std::string& secret) {
  const SecretServiceConversation service;
  const auto written = find(service, key).and_then([&](const SecretItems& items) {
    return write(service, items, key, QByteArray::fromStdString(secret));
  });
  if (written) return *written;
  noteFailure(written.error(), key);
  return opensLater(written.error()) ? SecretWrite::locked : SecretWrite::failed;
}

SecretWrite SecretServiceStore::remove(const SecretKey& key) {
  const SecretServiceConversation service;
  const auto removed = find(service, key).and_then([&](const SecretItems& items) {
    return removeAll(service, items);
  });
  if (removed) return *removed;
  noteFailure(removed.error(), key);
  if (removed.error() == SecretServiceFailure::missing) return SecretWrite::done;
  return opensLater(removed.error()) ? SecretWrite::locked : SecretWrite::failed;
}

void SecretServiceStore::unlock(std::function<void(bool opened)> completion) {
  unlockCompletions_.push_back(std::move(completion));
  askToUnlock();
}

bool SecretServiceStore::watch(std::function<void()> /*changed*/) {
  return false;
}

void SecretServiceStore::askToUnlock() {
  if (unlock_ || wait_ || unlockCompletions_.empty()) return;
  const auto missing = saveWaits_ ? SecretUnlock::Missing::isMade : SecretUnlock::Missing::stays;
  unlock_ = std::make_unique<SecretUnlock>(std::exchange(lockedItems_, {}), missing,
                                           [this](bool opened) { unlockEnded(opened); });
}

void SecretServiceStore::unlockEnded(bool opened) {
  unlock_.release()->deleteLater();
  for (const auto& completion : std::exchange(unlockCompletions_, {})) completion(opened);
}

SecretServiceAnswer<void> SecretServiceStore::reach(const SecretServiceConversation& service) {
  if (wait_) return tl::unexpected(SecretServiceFailure::unanswered);
  const auto running = service.isRunning();
  if (!running) return tl::unexpected(running.error());
  if (*running) return {};
  if (std::exchange(startTried_, true)) return tl::unexpected(SecretServiceFailure::missing);
  return service.start().map_error([](SecretServiceFailure failure) {
    return failure == SecretServiceFailure::refused ? SecretServiceFailure::missing : failure;
  });
}

SecretServiceAnswer<SecretItems> SecretServiceStore::find(const SecretServiceConversation& service,
                                                          const SecretKey& key) {
  return reach(service)
      .and_then([&] { return service.search(key); })
      .map([this](const SecretItems& items) {
        lockedItems_ = items.locked;
        return items;
      });
}

void SecretServiceStore::noteFailure(SecretServiceFailure failure, const SecretKey& key) {
  if (failure != SecretServiceFailure::unanswered || wait_) return;
  wait_ = std::make_unique<SecretServiceWait>(key, [this] { waitEnded(); });
}

void SecretServiceStore::waitEnded() {
  wait_.release()->deleteLater();
  askToUnlock();
}

}  // namespace notewick
