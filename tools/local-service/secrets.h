#pragma once

#include <string>
#include <string_view>

namespace notewick::service {

/// 32 bytes from OpenSSL's generator, in the URL-safe alphabet (RFC 4648, 5), without padding.
[[nodiscard]] std::string randomToken();

/// A random UUID (RFC 9562, version 4), lower case.
[[nodiscard]] std::string randomUuid();

/// SHA-256 in hexadecimal. Enough for tokens, which are random; passwords take hashPassword.
[[nodiscard]] std::string fingerprint(std::string_view token);

/// Argon2id with 19 MiB and two passes (OWASP's password storage recommendation), as its encoded
/// text with salt and costs. Takes some tens of milliseconds, by intention.
[[nodiscard]] std::string hashPassword(std::string_view password);

/// False also for a hash that cannot be read.
[[nodiscard]] bool passwordMatches(std::string_view password, const std::string& hash);

}  // namespace notewick::service
