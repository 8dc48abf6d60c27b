#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "doctor/finding.h"

namespace notewick {

/// What the checks of the way to the service say. Pure functions over what was seen.

/// `base` is the base URL in force. Only its scheme, host and port are told: the rest of an address
/// may hold a user's name.
[[nodiscard]] Finding aboutAddress(std::string_view base);

enum class ProxyKind { none, http, socks5, unusable };
struct ProxyFacts {
  ProxyKind kind;
  std::string host;  ///< without user and password
  int port = 0;
  std::string namedBy;  ///< who names it
};
[[nodiscard]] Finding aboutProxy(const ProxyFacts& proxy);

/// When a server's certificate ends.
struct CertificateEnd {
  std::string day;  ///< yyyy-MM-dd
  double daysLeft;
};

struct ServiceFacts {
  std::optional<int> statusCode;              ///< absent when no answer came
  std::string failure;                        ///< why; a fixed sentence
  std::optional<CertificateEnd> certificate;  ///< absent when none was seen
};
/// A service that refuses a request without a token is well: it has answered.
[[nodiscard]] Finding aboutService(const ServiceFacts& service);

}  // namespace notewick
