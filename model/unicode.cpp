#include "model/unicode.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <utility>

#include "model/cluster_breaks.h"

namespace notewick {
namespace {

constexpr utf8proc_int32_t REPLACEMENT = 0xFFFD;
constexpr utf8proc_int32_t CAPITAL_I_WITH_DOT_ABOVE = 0x0130;
constexpr utf8proc_int32_t COMBINING_DOT_ABOVE = 0x0307;
constexpr utf8proc_int32_t FIRST_COMBINING_MARK = 0x0300;

const utf8proc_uint8_t* unsignedBytes(std::string_view text) {
  return reinterpret_cast<const utf8proc_uint8_t*>(text.data());
}

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

bool isAscii(utf8proc_int32_t codePoint) {
  return codePoint < 0x80;
}

/// Calls `visit` with each code point of `text` in turn.
template <class Visit>
void forEachCodePoint(std::string_view text, Visit visit) {
  while (!text.empty()) {
    if (const auto byte = static_cast<unsigned char>(text[0]); isAscii(byte)) {
      visit(byte);
      text.remove_prefix(1);
      continue;
    }
    utf8proc_int32_t codePoint;
    const auto length = utf8proc_iterate(unsignedBytes(text),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    visit(length > 0 ? codePoint : REPLACEMENT);
    text.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : illFormedLength(text));
  }
}

void append(std::string& text, utf8proc_int32_t codePoint) {
  if (isAscii(codePoint)) return text.push_back(static_cast<char>(codePoint));
  std::array<utf8proc_uint8_t, 4> bytes;
  const auto length = utf8proc_encode_char(codePoint, bytes.data());
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

std::size_t encodedLength(utf8proc_int32_t codePoint) {
  return codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](unsigned char byte) { return isAscii(byte); });
}

utf8proc_int32_t lowerCase(utf8proc_int32_t codePoint) {
  if (!isAscii(codePoint)) return utf8proc_tolower(codePoint);
  return codePoint >= 'A' && codePoint <= 'Z' ? codePoint - 'A' + 'a' : codePoint;
}

using CodePoints = std::vector<utf8proc_int32_t>;

auto combiningClass(utf8proc_int32_t codePoint) {
  return utf8proc_get_property(codePoint)->combining_class;
}

bool isStarter(utf8proc_int32_t codePoint) {
  return codePoint < FIRST_COMBINING_MARK || combiningClass(codePoint) == 0;
}

// The library's own way to sort marks takes the square of their number.
void sortMarks(CodePoints& codePoints) {
  auto runEnd = codePoints.begin();
  while (runEnd != codePoints.end()) {
    const auto run = std::find_if_not(runEnd, codePoints.end(), isStarter);
    runEnd = std::find_if(run, codePoints.end(), isStarter);
    std::ranges::stable_sort(run, runEnd, {}, combiningClass);
  }
}

CodePoints decomposed(std::string_view valid) {
  CodePoints codePoints;
  codePoints.reserve(valid.size());
  forEachCodePoint(valid, [&](utf8proc_int32_t codePoint) {
    if (isAscii(codePoint)) return codePoints.push_back(codePoint);
    std::array<utf8proc_int32_t, 8> parts;
    int boundaryClass = 0;
    const auto count = utf8proc_decompose_char(codePoint, parts.data(), parts.size(),
                                               UTF8PROC_DECOMPOSE, &boundaryClass);
    codePoints.insert(codePoints.end(), parts.begin(), parts.begin() + count);
  });
  sortMarks(codePoints);
  return codePoints;
}

std::string encoded(const CodePoints& codePoints) {
  std::string text;
  text.reserve(codePoints.size());
  for (const auto codePoint : codePoints) append(text, codePoint);
  return text;
}

std::vector<bool> clusterBoundaries(std::string_view valid) {
  std::vector<bool> boundaries(valid.size() + 1, false);
  ClusterBreaks breaks;
  std::size_t place = 0;
  forEachCodePoint(valid, [&](utf8proc_int32_t codePoint) {
    boundaries[place] = breaks.before(codePoint);
    place += encodedLength(codePoint);
  });
  boundaries[place] = true;
  return boundaries;
}

bool isBlank(utf8proc_int32_t codePoint) {
  return codePoint == '\t' || utf8proc_category(codePoint) == UTF8PROC_CATEGORY_ZS;
}

bool isLineBreak(utf8proc_int32_t codePoint) {
  return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
         codePoint == 0x2029;
}

template <class Predicate>
std::string trimmed(std::string_view text, Predicate isTrimmed) {
  std::string valid = validUtf8(text);
  std::size_t place = 0;
  std::size_t begin = valid.size();
  std::size_t end = 0;
  forEachCodePoint(valid, [&](utf8proc_int32_t codePoint) {
    std::string encoded;
    append(encoded, codePoint);
    if (!isTrimmed(codePoint)) {
      begin = std::min(begin, place);
      end = place + encoded.size();
    }
    place += encoded.size();
  });
  return begin < end ? valid.substr(begin, end - begin) : std::string();
}

}  // namespace

std::string validUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  forEachCodePoint(text, [&](utf8proc_int32_t codePoint) { append(valid, codePoint); });
  return valid;
}

std::string lowerCased(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  forEachCodePoint(text, [&](utf8proc_int32_t codePoint) {
    append(lower, lowerCase(codePoint));
    if (codePoint == CAPITAL_I_WITH_DOT_ABOVE) append(lower, COMBINING_DOT_ABOVE);
  });
  return lower;
}

FoldedText folded(std::string_view text) {
  std::string bytes = lowerCased(text);
  if (!isAscii(bytes)) bytes = encoded(decomposed(bytes));
  std::vector<bool> boundaries = clusterBoundaries(bytes);
  return {std::move(bytes), std::move(boundaries)};
}

std::string composed(std::string_view text) {
  if (isAscii(text)) return std::string(text);
  CodePoints codePoints = decomposed(validUtf8(text));
  const auto length =
      utf8proc_normalize_utf32(codePoints.data(), static_cast<utf8proc_ssize_t>(codePoints.size()),
                               static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE));
  codePoints.resize(static_cast<std::size_t>(length));
  return encoded(codePoints);
}

std::string trimmedOfBlanks(std::string_view text) {
  return trimmed(text, isBlank);
}

std::string trimmedOfBlanksAndLineBreaks(std::string_view text) {
  return trimmed(text, [](utf8proc_int32_t codePoint) {
    return isBlank(codePoint) || isLineBreak(codePoint);
  });
}

}  // namespace notewick
