#include "platform/linux/secret_store.h"

#include <QDBusConnection>
#include <QStringDecoder>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/linux/secrets/secret_service_watch.h"
#include "platform/linux/secrets/secret_unlock.h"

namespace notewick {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::seconds FIRST_PAUSE{1};
constexpr std::chrono::seconds LONGEST_PAUSE{60};
constexpr std::chrono::milliseconds FORGOTTEN = 5min;

bool isUtf8(const std::string& text) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(QByteArrayView(text));
  return !decoder.hasError();
}

using LookupAnswer = SecretServiceAnswer<SecretLookup>;
using WriteAnswer = SecretServiceAnswer<SecretWrite>;

SecretState stateOf(const SecretItems& items) {
  if (!items.unlocked.isEmpty()) return SecretState::found;
  return items.locked.isEmpty() ? SecretState::absent : SecretState::locked;
}

LookupAnswer lookUp(const SecretServiceConversation& service, const SecretItems& items) {
  if (items.unlocked.isEmpty()) return SecretLookup{stateOf(items), ""};
  return service.secretOf(items.unlocked.front()).map([](const std::string& secret) {
    if (!isUtf8(secret)) return SecretLookup{SecretState::absent, ""};
    return SecretLookup{SecretState::found, secret};
  });
}

WriteAnswer create(const SecretServiceConversation& service, const SecretKey& key,
                   const std::string& secret) {
  const auto collection = service.defaultCollection();
  if (!collection) return tl::unexpected(collection.error());
  const std::optional<QDBusObjectPath>& path = *collection;
  if (!path) return SecretWrite::locked;
  const auto locked = service.isLocked(*path);
  if (!locked) return tl::unexpected(locked.error());
  if (*locked) return SecretWrite::locked;
  return service.create(*path, key, secret).map([] { return SecretWrite::done; });
}

WriteAnswer removeAll(const SecretServiceConversation& service, const SecretItems& items) {
  for (const QDBusObjectPath& item : items.unlocked) {
    const auto removed = service.remove(item);
    if (!removed) return tl::unexpected(removed.error());
  }
  return items.locked.isEmpty() ? SecretWrite::done : SecretWrite::locked;
}

WriteAnswer write(const SecretServiceConversation& service, SecretItems items, const SecretKey& key,
                  const std::string& secret) {
  if (items.unlocked.isEmpty()) {
    return items.locked.isEmpty() ? create(service, key, secret) : SecretWrite::locked;
  }
  const QDBusObjectPath kept = items.unlocked.takeFirst();
  return service.replaceSecret(kept, secret).and_then([&] { return removeAll(service, items); });
}

}  // namespace

SecretServiceStore::SecretServiceStore(std::chrono::milliseconds patience) : patience_(patience) {}
SecretServiceStore::~SecretServiceStore() = default;

SecretState SecretServiceStore::state(const SecretKey& key) {
  const SecretServiceConversation service(patience_);
  const auto state = find(service, key).map(stateOf);
  return state ? *state : stateAfter(state.error(), key);
}

SecretLookup SecretServiceStore::load(const SecretKey& key) {
  const SecretServiceConversation service(patience_);
  const auto lookup =
      find(service, key).and_then([&](const SecretItems& items) { return lookUp(service, items); });
  return lookup ? *lookup : SecretLookup{stateAfter(lookup.error(), key), ""};
}

SecretWrite SecretServiceStore::save(const SecretKey& key, const std::string& secret) {
  const SecretWrite written = trySave(key, secret);
  saveWaits_ = written == SecretWrite::locked;
  return written;
}

SecretWrite SecretServiceStore::trySave(const SecretKey& key, const std::string& secret) {
  const SecretServiceConversation service(patience_);
  const auto written = find(service, key).and_then([&](const SecretItems& items) {
    return write(service, items, key, secret);
  });
  return written ? *written : outcomeAfter(written.error(), key);
}

SecretWrite SecretServiceStore::remove(const SecretKey& key) {
  const SecretServiceConversation service(patience_);
  const auto removed = find(service, key).and_then([&](const SecretItems& items) {
    return removeAll(service, items);
  });
  return removed ? *removed : outcomeAfter(removed.error(), key);
}

void SecretServiceStore::unlock(std::function<void(bool opened)> completion) {
  unlockCompletions_.push_back(std::move(completion));
  askToUnlock();
}

bool SecretServiceStore::watch(std::function<void()> changed) {
  if (!QDBusConnection::sessionBus().isConnected()) return false;
  watch_ = std::make_unique<SecretServiceWatch>(std::move(changed));
  return true;
}

SecretState SecretServiceStore::stateAfter(SecretServiceFailure failure, const SecretKey& key) {
  noteFailure(failure, key);
  if (opensLater(failure)) return SecretState::locked;
  return failure == SecretServiceFailure::missing ? SecretState::noStore : SecretState::absent;
}

SecretWrite SecretServiceStore::outcomeAfter(SecretServiceFailure failure, const SecretKey& key) {
  noteFailure(failure, key);
  if (opensLater(failure)) return SecretWrite::locked;
  return failure == SecretServiceFailure::missing ? SecretWrite::noStore : SecretWrite::failed;
}

bool SecretServiceStore::opensLater(SecretServiceFailure failure) const {
  if (failure == SecretServiceFailure::missing) return wasThere_;
  return failure == SecretServiceFailure::unanswered || failure == SecretServiceFailure::locked;
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
  wasThere_ = wasThere_ || *running;
  if (*running) return {};
  if (wasThere_ || std::exchange(startTried_, true)) {
    return tl::unexpected(SecretServiceFailure::missing);
  }
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
  using Missing = SecretServiceWait::Missing;
  wait_ = std::make_unique<SecretServiceWait>(key, wasThere_ ? Missing::stays : Missing::isStarted,
                                              [this] { waitEnded(); });
}

void SecretServiceStore::waitEnded() {
  wait_.release()->deleteLater();
  askToUnlock();
  reportAnswer();
}

void SecretServiceStore::reportAnswer() {
  const bool again = sinceWait_.isValid() && !sinceWait_.hasExpired(FORGOTTEN.count());
  pause_ = again ? std::clamp(2 * pause_, FIRST_PAUSE, LONGEST_PAUSE) : 0s;
  sinceWait_.start();
  if (watch_) QTimer::singleShot(pause_, watch_.get(), &SecretServiceWatch::report);
}

}  // namespace notewick
