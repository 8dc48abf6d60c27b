#include "model/unicode.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "model/cluster_breaks.h"
#include "model/code_points.h"

namespace notewick {
namespace {

constexpr utf8proc_int32_t REPLACEMENT = 0xFFFD;
constexpr utf8proc_int32_t CAPITAL_I_WITH_DOT_ABOVE = 0x0130;
constexpr utf8proc_int32_t COMBINING_DOT_ABOVE = 0x0307;
constexpr utf8proc_int32_t FIRST_COMBINING_MARK = 0x0300;

bool isAscii(utf8proc_int32_t codePoint) {
  return codePoint < 0x80;
}

void append(std::string& text, utf8proc_int32_t codePoint) {
  if (isAscii(codePoint)) return text.push_back(static_cast<char>(codePoint));
  std::array<utf8proc_uint8_t, 4> bytes;
  const auto length = utf8proc_encode_char(codePoint, bytes.data());
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
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

bool isHangulSyllable(utf8proc_int32_t codePoint) {
  return codePoint >= 0xAC00 && codePoint <= 0xD7A3;
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

/// The full canonical decomposition of one code point.
class Decomposition {
 public:
  explicit Decomposition(utf8proc_int32_t codePoint) {
    int boundaryClass = 0;
    count_ = utf8proc_decompose_char(codePoint, parts_.data(),
                                     static_cast<utf8proc_ssize_t>(parts_.size()),
                                     UTF8PROC_DECOMPOSE, &boundaryClass);
  }
  [[nodiscard]] auto begin() const { return parts_.begin(); }
  [[nodiscard]] auto end() const { return parts_.begin() + count_; }

 private:
  std::array<utf8proc_int32_t, 8> parts_;
  utf8proc_ssize_t count_;
};

CodePoints decomposed(std::string_view valid) {
  CodePoints codePoints;
  codePoints.reserve(valid.size());
  forEachCodePoint(valid, [&](utf8proc_int32_t codePoint, std::string_view) {
    if (isAscii(codePoint)) return codePoints.push_back(codePoint);
    const Decomposition parts(codePoint);
    codePoints.insert(codePoints.end(), parts.begin(), parts.end());
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

bool isBlank(utf8proc_int32_t codePoint) {
  return codePoint == '\t' || utf8proc_category(codePoint) == UTF8PROC_CATEGORY_ZS;
}

bool isLineBreak(utf8proc_int32_t codePoint) {
  return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
         codePoint == 0x2029;
}

char lowerCaseOfAscii(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// What a code point becomes when it is folded, and the combining classes at its ends.
class FoldedCodePoint {
 public:
  explicit FoldedCodePoint(utf8proc_int32_t codePoint) {
    add(lowerCase(codePoint));
    if (codePoint == CAPITAL_I_WITH_DOT_ABOVE) add(COMBINING_DOT_ABOVE);
  }

  [[nodiscard]] std::string_view text() const { return {bytes_.data(), length_}; }
  /// Whether it stands in canonical order behind a character of that class.
  [[nodiscard]] bool mayFollow(utf8proc_propval_t before) const {
    return firstClass_ == 0 || firstClass_ >= before;
  }
  [[nodiscard]] utf8proc_propval_t lastClass() const { return lastClass_; }

 private:
  void add(utf8proc_int32_t codePoint) {
    for (const auto part : Decomposition(codePoint)) {
      lastClass_ = combiningClass(part);
      if (length_ == 0) firstClass_ = lastClass_;
      std::string encoded;
      append(encoded, part);
      std::ranges::copy(encoded, bytes_.begin() + length_);
      length_ += static_cast<std::uint8_t>(encoded.size());
    }
  }

  std::array<char, 16> bytes_;  ///< the longest takes 12
  std::uint8_t length_ = 0;
  utf8proc_propval_t firstClass_ = 0;
  utf8proc_propval_t lastClass_ = 0;
};

/// The Latin, Greek and Cyrillic letters that most names are written in are worked out once, which
/// makes a text of them four times as fast.
FoldedCodePoint foldedCodePoint(utf8proc_int32_t codePoint) {
  constexpr utf8proc_int32_t FIRST_UNCOMMON = 0x0530;
  static const auto common = [] {
    std::vector<FoldedCodePoint> all;
    for (utf8proc_int32_t each = 0; each < FIRST_UNCOMMON; ++each) all.emplace_back(each);
    return all;
  }();
  if (codePoint < FIRST_UNCOMMON) return common[static_cast<std::size_t>(codePoint)];
  return FoldedCodePoint(codePoint);
}

/// Whether folding leaves the code point as it is, whatever stands beside it. Not sure to say so
/// of each.
bool isSurelyUnchanged(utf8proc_int32_t codePoint) {
  if (isHangulSyllable(codePoint) || codePoint == REPLACEMENT) return false;
  const auto& property = *utf8proc_get_property(codePoint);
  return property.lowercase_seqindex == UINT16_MAX && property.decomp_seqindex == UINT16_MAX &&
         property.combining_class == 0;
}

/// Lower-cases and decomposes a text whose ASCII letters are lower-case already. Runs that do not
/// change are copied whole.
std::string foldedBeyondAscii(std::string_view text) {
  std::string folded;
  folded.reserve(text.size() * 3 / 2);
  std::size_t copied = 0;
  bool isOrdered = true;
  utf8proc_propval_t lastClass = 0;
  for (std::size_t place = 0; place < text.size();) {
    const auto [codePoint, length] = firstCodePoint(text.substr(place));
    place += length;
    if (isAscii(codePoint) || isSurelyUnchanged(codePoint)) continue;
    const std::size_t run = place - length - copied;
    folded += text.substr(copied, run);
    copied = place;
    const FoldedCodePoint changed = foldedCodePoint(codePoint);
    isOrdered = isOrdered && (run > 0 || changed.mayFollow(lastClass));
    lastClass = changed.lastClass();
    folded += changed.text();
  }
  folded += text.substr(copied);
  return isOrdered ? folded : encoded(decomposed(folded));
}

template <class Predicate>
std::string trimmed(std::string_view text, Predicate isTrimmed) {
  std::string valid = validUtf8(text);
  std::size_t place = 0;
  std::size_t begin = valid.size();
  std::size_t end = 0;
  while (place < valid.size()) {
    const auto [codePoint, length] = firstCodePoint(std::string_view(valid).substr(place));
    if (!isTrimmed(codePoint)) {
      begin = std::min(begin, place);
      end = place + length;
    }
    place += length;
  }
  return begin < end ? valid.substr(begin, end - begin) : std::string();
}

}  // namespace

std::string validUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  forEachCodePoint(text,
                   [&](utf8proc_int32_t codePoint, std::string_view) { append(valid, codePoint); });
  return valid;
}

std::string lowerCased(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  forEachCodePoint(text, [&](utf8proc_int32_t codePoint, std::string_view) {
    append(lower, lowerCase(codePoint));
    if (codePoint == CAPITAL_I_WITH_DOT_ABOVE) append(lower, COMBINING_DOT_ABOVE);
  });
  return lower;
}

std::string folded(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), lowerCaseOfAscii);
  if (isAscii(lower)) return lower;
  return foldedBeyondAscii(lower);
}

bool isClusterBoundary(std::string_view valid, std::size_t place) {
  if (place == 0 || place == valid.size()) return true;
  // A cluster has no memory beyond the ASCII character before.
  std::size_t start = place - 1;
  while (start > 0 && !isAscii(static_cast<unsigned char>(valid[start]))) --start;
  ClusterBreaks breaks;
  bool begins = false;
  while (start <= place) {
    const auto [codePoint, length] = firstCodePoint(valid.substr(start));
    begins = breaks.before(codePoint);
    start += length;
  }
  return begins;
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
