#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>
#include <vector>

namespace notewick {

/// The one bridge between the program's UTF-8 and the system's strings. Never null: text that is no
/// UTF-8 becomes the empty string.
[[nodiscard]] NSString* nsString(std::string_view text);
[[nodiscard]] NSArray<NSString*>* nsStrings(const std::vector<std::string>& texts);

/// Valid UTF-8, whatever stands in `text`: halves of surrogate pairs are replaced. Empty for nil.
[[nodiscard]] std::string utf8(NSString* text);

}  // namespace notewick
