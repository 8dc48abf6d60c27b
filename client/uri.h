#pragma once

#include <string_view>

namespace notewick {

/// Whether `text` is a URI reference by the grammar of RFC 3986 (section 4.1), characters beyond
/// ASCII not allowed. The empty text is one.
[[nodiscard]] bool isUriReference(std::string_view text);

}  // namespace notewick
