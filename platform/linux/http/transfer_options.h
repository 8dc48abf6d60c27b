#pragma once

#include <QNetworkProxy>
#include <QUrl>

#include "platform/http_session.h"
#include "platform/linux/http/curl_handles.h"
#include "platform/linux/http/trusted_authorities.h"

namespace notewick {

/// One HTTP/1.1 request on a connection of its own, sent once: no redirect, no second attempt, no
/// cookies, no credentials, nothing decoded. `request` has to stay; its headers go out through
/// headersOf().
void setRequest(CURL* handle, const QUrl& address, const HttpRequest& request);

/// The headers given, and none of libcurl's own besides Host and Content-Length. Null where one
/// cannot be sent, or would be read as more than one.
[[nodiscard]] CurlList headersOf(const HttpRequest& request);

/// TLS 1.2 or newer with these authorities, which have to stay.
void setSecurity(CURL* handle, TrustedAuthorities& authorities);

/// Goes through this proxy, or through none; libcurl looks for none by itself. A user name is sent
/// to an HTTP proxy unasked, as Basic.
void setProxy(CURL* handle, const QNetworkProxy& proxy);

}  // namespace notewick
