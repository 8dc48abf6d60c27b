#include "platform/linux/http/desktop_proxies.h"

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>
#include <chrono>
#include <utility>

namespace notewick {
namespace {

constexpr std::chrono::minutes COUNTS_FOR{1};

QUrl originOf(const QUrl& url) {
  return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery |
                      QUrl::RemoveFragment);
}

}  // namespace

void DesktopProxies::find(const QUrl& url, Found found) {
  const QUrl address = originOf(url);
  Origin& origin = origins_[address.toString()];
  if (!origin.known.hasExpired()) return found(origin.proxies);
  origin.waiting.push_back(std::move(found));
  if (origin.waiting.size() == 1) ask(address.toString(), address);
}

void DesktopProxies::ask(const QString& name, const QUrl& url) {
  const auto promise = std::make_shared<QPromise<QList<QNetworkProxy>>>();
  auto* const watcher = new QFutureWatcher<QList<QNetworkProxy>>(this);
  connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, name] {
    watcher->deleteLater();
    heard(name, watcher->result());
  });
  watcher->setFuture(promise->future());
  QThreadPool::globalInstance()->start([promise, url, ask = ask_] {
    promise->start();
    promise->addResult(ask(QNetworkProxyQuery(url)));
    promise->finish();
  });
}

void DesktopProxies::heard(const QString& name, const QList<QNetworkProxy>& proxies) {
  Origin& origin = origins_[name];
  origin.proxies = proxies;
  origin.known.setRemainingTime(COUNTS_FOR);
  for (const Found& found : std::exchange(origin.waiting, {})) found(proxies);
}

}  // namespace notewick
