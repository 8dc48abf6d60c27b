#pragma once

#include <curl/curl.h>

namespace notewick {

/// Fixed English sentences for the user; none contains an address.
namespace http_error {

inline constexpr const char* INVALID_ADDRESS = "The address is not valid.";
inline constexpr const char* INVALID_REQUEST = "The request is not valid.";
inline constexpr const char* TIMED_OUT = "The request timed out.";
inline constexpr const char* REFUSED = "The connection was refused.";
inline constexpr const char* FAILED = "The connection failed.";
inline constexpr const char* LOST = "The connection was lost.";
inline constexpr const char* NOT_FOUND = "The server could not be found.";
inline constexpr const char* INSECURE = "A secure connection could not be made.";
inline constexpr const char* NOT_UNDERSTOOD = "The server's answer could not be understood.";
inline constexpr const char* TOO_LARGE = "The server's answer is too large.";
inline constexpr const char* INVALID_PROXY = "The proxy's address is not valid.";
inline constexpr const char* PROXY_NOT_FOUND = "The proxy could not be found.";
inline constexpr const char* PROXY_REFUSED = "The proxy refused the connection.";
inline constexpr const char* PROXY_PASSWORD = "The proxy asks for a user name and a password.";

}  // namespace http_error

/// The sentence for a transfer that libcurl ended with `code`, which is not CURLE_OK. `systemError`
/// is the errno of the last attempt to connect.
[[nodiscard]] const char* descriptionOf(CURLcode code, long systemError = 0);

}  // namespace notewick
