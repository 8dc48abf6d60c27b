#include "platform/linux/http/proxy_choice.h"

#include <QHostAddress>
#include <QRegularExpression>

#include "platform/linux/http/http_errors.h"

namespace notewick {
namespace {

constexpr quint16 HTTP_PROXY_PORT = 80;
constexpr quint16 SOCKS_PORT = 1080;
constexpr int HTTPS_PORT = 443;

QString hostOf(const QUrl& url) {
  QString host = url.host().toLower();
  if (host.endsWith('.')) host.chop(1);
  return host;
}

/// The value of the variable in small letters, or else in capitals; empty where neither is set.
QString valueOf(const char* name, const QProcessEnvironment& environment) {
  const QString small = environment.value(name);
  return (small.isEmpty() ? environment.value(QString(name).toUpper()) : small).trimmed();
}

bool isInNetwork(const QHostAddress& address, const QString& network) {
  return network.contains('/') && address.isInSubnet(QHostAddress::parseSubnet(network));
}

bool isInDomain(const QString& host, const QString& domain) {
  return !domain.isEmpty() && (host == domain || host.endsWith('.' + domain));
}

QString withoutDots(QString domain) {
  if (domain.startsWith('*')) domain.remove(0, 1);
  while (domain.startsWith('.')) domain.remove(0, 1);
  if (domain.endsWith('.')) domain.chop(1);
  return domain;
}

bool isExempt(const QUrl& url, const QString& entry) {
  if (entry == "*") return true;
  const QString host = hostOf(url);
  const QHostAddress address(host);
  if (isInNetwork(address, entry)) return true;
  if (!address.isNull() && QHostAddress(entry) == address) return true;
  static const QRegularExpression form(R"(^\[?(.*?)\]?(?::(\d+))?$)");
  const auto parts = form.match(entry);
  if (parts.hasCaptured(2) && parts.captured(2).toInt() != url.port(HTTPS_PORT)) return false;
  const QString named = parts.captured(1);
  if (!address.isNull()) return QHostAddress(named) == address;
  return isInDomain(host, withoutDots(named));
}

bool needsNoProxy(const QUrl& url, const QString& list) {
  static const QRegularExpression separators("[,\\s]+");
  const QStringList entries = list.toLower().split(separators, Qt::SkipEmptyParts);
  return std::ranges::any_of(entries, [&](const QString& entry) { return isExempt(url, entry); });
}

std::optional<QNetworkProxy::ProxyType> typeOf(const QString& scheme) {
  if (scheme == "http") return QNetworkProxy::HttpProxy;
  if (scheme == "socks5" || scheme == "socks5h" || scheme == "socks") {
    return QNetworkProxy::Socks5Proxy;
  }
  return std::nullopt;
}

quint16 usualPort(QNetworkProxy::ProxyType type) {
  return type == QNetworkProxy::Socks5Proxy ? SOCKS_PORT : HTTP_PROXY_PORT;
}

ProxyChoice proxyAt(const QString& text) {
  const QUrl address(text.contains("://") ? text : "http://" + text);
  const auto type = typeOf(address.scheme());
  if (!type || !address.isValid() || address.host().isEmpty()) {
    return tl::unexpected(TransportError{http_error::INVALID_PROXY});
  }
  return QNetworkProxy(*type, address.host(), static_cast<quint16>(address.port(usualPort(*type))),
                       address.userName(QUrl::FullyDecoded), address.password(QUrl::FullyDecoded));
}

}  // namespace

std::optional<ProxyChoice> proxyOfEnvironment(const QUrl& url,
                                              const QProcessEnvironment& environment) {
  if (needsNoProxy(url, valueOf("no_proxy", environment))) {
    return QNetworkProxy(QNetworkProxy::NoProxy);
  }
  for (const char* name : {"https_proxy", "all_proxy", "http_proxy"}) {
    const QString value = valueOf(name, environment);
    if (!value.isEmpty()) return proxyAt(value);
  }
  return std::nullopt;
}

QNetworkProxy proxyOfDesktop(const QList<QNetworkProxy>& proxies) {
  for (QNetworkProxy proxy : proxies) {
    if (proxy.type() == QNetworkProxy::NoProxy) break;
    const bool isKnown =
        proxy.type() == QNetworkProxy::HttpProxy || proxy.type() == QNetworkProxy::Socks5Proxy;
    if (!isKnown || proxy.hostName().isEmpty()) continue;
    if (proxy.port() == 0) proxy.setPort(usualPort(proxy.type()));
    return proxy;
  }
  return QNetworkProxy(QNetworkProxy::NoProxy);
}

}  // namespace notewick
