#pragma once

#include <string>

namespace notewick {

/// The prefix of every service path, without a trailing slash: the text under the user default
/// "VELKBaseURL", else `DEFAULT_BASE_URL`, less exactly one trailing "/". Read anew at every call.
/// Main thread.
[[nodiscard]] std::string apiBaseURL();

/// `apiBaseURL()` followed by `path`, which begins with "/". A text that is no URI reference
/// (RFC 3986, section 4.1) is a configuration fault: one line on standard error says so, and the
/// program ends.
[[nodiscard]] std::string serviceURL(const std::string& path);

/// The address of the service's sign-in page: the origin of the base URL followed by "/login".
[[nodiscard]] std::string loginPageURL();

}  // namespace notewick
