#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace notewick {

/// The one bridge between the program's UTF-8 and the system's strings. Never null: text that is no
/// UTF-8 becomes the empty string.
[[nodiscard]] NSString* nsString(std::string_view text);

/// Valid UTF-8, whatever stands in `text`: halves of surrogate pairs are replaced. Empty for nil.
[[nodiscard]] std::string utf8(NSString* text);

}  // namespace notewick
