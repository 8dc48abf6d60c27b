#include "model/drawn_text.h"

#include <utf8proc.h>

#include <algorithm>

#include "model/unicode.h"

namespace notewick {
namespace {

constexpr const char* FIRST_STRONG_ISOLATE = "\u2068";
constexpr const char* POP_DIRECTIONAL_ISOLATE = "\u2069";

bool isPlain(char character) {
  return character >= ' ' && character <= '~';
}

bool endsLine(const utf8proc_property_t& property) {
  return property.category == UTF8PROC_CATEGORY_CC || property.category == UTF8PROC_CATEGORY_ZL ||
         property.category == UTF8PROC_CATEGORY_ZP;
}

bool setsDirection(utf8proc_int32_t value) {
  return (value >= 0x202A && value <= 0x202E) || (value >= 0x2066 && value <= 0x2069);
}

bool runsLeft(const utf8proc_property_t& property) {
  return property.bidi_class == UTF8PROC_BIDI_CLASS_R ||
         property.bidi_class == UTF8PROC_BIDI_CLASS_AL;
}

}  // namespace

std::string drawnText(std::string_view text) {
  if (std::ranges::all_of(text, isPlain)) return std::string(text);
  const std::string valid = validUtf8(text);
  std::string_view rest = valid;
  std::string drawn;
  bool isolated = false;
  while (!rest.empty()) {
    utf8proc_int32_t value = 0;
    const auto length = static_cast<std::size_t>(
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                         static_cast<utf8proc_ssize_t>(rest.size()), &value));
    const utf8proc_property_t& property = *utf8proc_get_property(value);
    isolated = isolated || runsLeft(property);
    if (endsLine(property)) {
      drawn += ' ';
    } else if (!setsDirection(value)) {
      drawn += rest.substr(0, length);
    }
    rest.remove_prefix(length);
  }
  return isolated ? FIRST_STRONG_ISOLATE + drawn + POP_DIRECTIONAL_ISOLATE : drawn;
}

}  // namespace notewick
