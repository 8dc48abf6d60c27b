#pragma once

#include <string>
#include <string_view>

#include "tools/local-service/clock.h"
#include "tools/local-service/http.h"

namespace notewick::service {

/// The text with everything escaped that HTML could read as markup, in content and in quoted
/// attributes; control characters that HTML does not allow become U+FFFD.
[[nodiscard]] std::string escaped(std::string_view text);

/// A whole page around the content (HTML already), with the one style sheet, light and dark by the
/// browser's preference. It may load nothing, run nothing, be framed by no one, and is not kept.
[[nodiscard]] Answer htmlPage(int status, std::string_view title, std::string_view content);

/// "2026-03-05" as "5 March 2026"; any other text as it is.
[[nodiscard]] std::string readableDate(std::string_view date);

/// The instant in the machine's time zone, as "5 March 2026, 14:07".
[[nodiscard]] std::string readableTime(Time time);

}  // namespace notewick::service
