#include "model/code_points.h"

#include <utf8proc.h>

#include <algorithm>

namespace notewick {
namespace {

/// The bytes that one U+FFFD stands for: the longest start of a well-formed sequence, at least one
/// (Unicode, table 3-7).
std::size_t illFormedLength(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  const std::size_t wanted = lead >= 0xF0 && lead <= 0xF4   ? 4
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xC2 && lead <= 0xDF ? 2
                                                            : 1;
  if (wanted == 1 || text.size() < 2) return 1;
  const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byte(1) < low || byte(1) > high) return 1;
  std::size_t length = 2;
  while (length < wanted - 1 && length < text.size() && (byte(length) & 0xC0) == 0x80) ++length;
  return std::min(length, text.size());
}

}  // namespace

CodePoint firstCodePoint(std::string_view text) {
  if (const auto byte = static_cast<unsigned char>(text[0]); byte < 0x80) return {byte, 1};
  constexpr std::int32_t ILL_FORMED = 0xFFFD;
  utf8proc_int32_t value = 0;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &value);
  if (length <= 0) return {ILL_FORMED, illFormedLength(text)};
  return {value, static_cast<std::size_t>(length)};
}

}  // namespace notewick
