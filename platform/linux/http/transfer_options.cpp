#include "platform/linux/http/transfer_options.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace notewick {
namespace {

constexpr long NO_TIME_LIMIT = std::numeric_limits<int>::max();

bool isOneLine(std::string_view text) {
  return std::ranges::none_of(text, [](char character) {
    return character == '\r' || character == '\n' || character == '\0';
  });
}

bool append(CurlList& list, const std::string& line) {
  curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
  if (longer == nullptr) return false;
  (void)list.release();
  list.reset(longer);
  return true;
}

bool isSame(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, [](char a, char b) { return (a | 0x20) == (b | 0x20); });
}

bool has(const HttpRequest& request, std::string_view name) {
  return std::ranges::any_of(request.headers,
                             [&](const auto& header) { return isSame(header.first, name); });
}

void setMethod(CURL* handle, const HttpRequest& request) {
  if (request.body) {
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, request.body->data());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(request.body->size()));
  } else {
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
  }
  curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request.method.c_str());
}

CURLcode trust(CURL* /*handle*/, void* context, void* authorities) {
  auto* const tls = static_cast<SSL_CTX*>(context);
  SSL_CTX_set_options(tls, SSL_OP_CLEANSE_PLAINTEXT);  // answers hold tokens
  static_cast<TrustedAuthorities*>(authorities)->applyTo(tls);
  return CURLE_OK;
}

std::string text(const QString& from) {
  return from.toStdString();
}

/// Qt keeps an IPv6 address without the brackets that it has in an address (RFC 3986, 3.2.2).
std::string hostInAddress(const QString& host) {
  return text(host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host);
}

}  // namespace

void setRequest(CURL* handle, const QUrl& address, const HttpRequest& request) {
  curl_easy_setopt(handle, CURLOPT_URL, address.toEncoded().constData());
  curl_easy_setopt(handle, CURLOPT_PATH_AS_IS, 1L);
  curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  curl_easy_setopt(handle, CURLOPT_HTTP_CONTENT_DECODING, 0L);
  curl_easy_setopt(handle, CURLOPT_FRESH_CONNECT, 1L);
  curl_easy_setopt(handle, CURLOPT_FORBID_REUSE, 1L);
  curl_easy_setopt(handle, CURLOPT_DNS_CACHE_TIMEOUT, 0L);
  curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, NO_TIME_LIMIT);
  setMethod(handle, request);
}

CurlList headersOf(const HttpRequest& request) {
  CurlList list;
  for (const auto& [name, value] : request.headers) {
    if (name.empty() || !isOneLine(name + value)) return nullptr;
    if (!append(list, value.empty() ? name + ";" : name + ": " + value)) return nullptr;
  }
  for (const char* own : {"Accept", "Content-Type", "Expect"}) {
    if (!has(request, own) && !append(list, std::string(own) + ":")) return nullptr;
  }
  return list;
}

void setSecurity(CURL* handle, TrustedAuthorities& authorities) {
  curl_easy_setopt(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(handle, CURLOPT_CAINFO, nullptr);
  curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
  curl_easy_setopt(handle, CURLOPT_SSL_CTX_FUNCTION, &trust);
  curl_easy_setopt(handle, CURLOPT_SSL_CTX_DATA, &authorities);
}

void setProxy(CURL* handle, const QNetworkProxy& proxy) {
  curl_easy_setopt(handle, CURLOPT_NOPROXY, "");
  if (proxy.type() == QNetworkProxy::NoProxy) {
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    return;
  }
  const bool isSocks = proxy.type() == QNetworkProxy::Socks5Proxy;
  curl_easy_setopt(handle, CURLOPT_PROXY, hostInAddress(proxy.hostName()).c_str());
  curl_easy_setopt(handle, CURLOPT_PROXYPORT, static_cast<long>(proxy.port()));
  curl_easy_setopt(handle, CURLOPT_PROXYTYPE,
                   static_cast<long>(isSocks ? CURLPROXY_SOCKS5_HOSTNAME : CURLPROXY_HTTP));
  if (isSocks) curl_easy_setopt(handle, CURLOPT_SOCKS5_AUTH, static_cast<long>(CURLAUTH_BASIC));
  curl_easy_setopt(handle, CURLOPT_HTTPPROXYTUNNEL, 1L);
  curl_easy_setopt(handle, CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE));
  if (proxy.user().isEmpty()) return;
  curl_easy_setopt(handle, CURLOPT_PROXYAUTH, CURLAUTH_BASIC);
  curl_easy_setopt(handle, CURLOPT_PROXYUSERNAME, text(proxy.user()).c_str());
  curl_easy_setopt(handle, CURLOPT_PROXYPASSWORD, text(proxy.password()).c_str());
}

}  // namespace notewick
