#include "model/drawn_text.h"

#include <utf8proc.h>

#include <algorithm>

#include "model/code_points.h"
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

bool setsDirection(std::int32_t value) {
  return (value >= 0x202A && value <= 0x202E) || (value >= 0x2066 && value <= 0x2069);
}

bool runsLeft(const utf8proc_property_t& property) {
  return property.bidi_class == UTF8PROC_BIDI_CLASS_R ||
         property.bidi_class == UTF8PROC_BIDI_CLASS_AL;
}

}  // namespace

std::string drawnText(std::string_view text) {
  if (std::ranges::all_of(text, isPlain)) return std::string(text);
  std::string drawn;
  forEachCodePoint(validUtf8(text), [&](std::int32_t value, std::string_view character) {
    if (endsLine(*utf8proc_get_property(value))) {
      drawn += ' ';
    } else if (!setsDirection(value)) {
      drawn += character;
    }
  });
  return drawn;
}

std::string appearanceOf(std::string_view drawn) {
  std::string visible;
  forEachCodePoint(drawn, [&](std::int32_t value, std::string_view character) {
    if (utf8proc_get_property(value)->category != UTF8PROC_CATEGORY_CF) visible += character;
  });
  return composed(visible);
}

std::string drawnWithin(std::string_view text) {
  const std::string drawn = drawnText(text);
  bool isolated = false;
  forEachCodePoint(drawn, [&](std::int32_t value, std::string_view) {
    isolated = isolated || runsLeft(*utf8proc_get_property(value));
  });
  return isolated ? FIRST_STRONG_ISOLATE + drawn + POP_DIRECTIONAL_ISOLATE : drawn;
}

}  // namespace notewick
