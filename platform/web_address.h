#pragma once

#include <string_view>

namespace notewick {

/// What may be done with an address that somebody wrote into the settings. Pure functions, right on
/// any text; scheme and host compare without regard to letter case.

/// Scheme and authority of an absolute URI ("https://host:port"); the whole text where it has
/// none. No trailing slash of an authority is included.
[[nodiscard]] std::string_view uriOrigin(std::string_view text);

/// Whether a browser can open it: "http" or "https", "//" and a host.
[[nodiscard]] bool isWebAddress(std::string_view text);

/// Whether it leads to this machine, over "http" or "https": to "localhost", a name that ends in
/// ".localhost" (RFC 6761, 6.3), four decimal numbers that begin with 127 (RFC 1122, 3.2.1.3), or
/// "[::1]" (RFC 4291, 2.5.3). Programs disagree about other spellings ("127.1", "localhost.",
/// "user@localhost"), so none of them counts.
[[nodiscard]] bool isLoopbackAddress(std::string_view text);

/// Whether passwords and tokens may be sent to it: "https" to anywhere, plain "http" to this
/// machine only. Addresses without a scheme, or with another, are not secure.
[[nodiscard]] bool isSecureAddress(std::string_view text);

}  // namespace notewick
