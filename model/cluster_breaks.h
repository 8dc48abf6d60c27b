#pragma once

#include <utf8proc.h>

#include <utility>

namespace notewick {

/// The boundaries of grapheme clusters (Unicode Annex 29), asked for one code point after the
/// other.
class ClusterBreaks {
 public:
  /// Whether a cluster begins with this code point. One always begins with the first.
  bool before(utf8proc_int32_t codePoint) {
    const auto previous = std::exchange(previous_, codePoint);
    if (isAscii(previous) && isAscii(codePoint)) {
      state_ = 0;
      return previous != '\r' || codePoint != '\n';
    }
    return utf8proc_grapheme_break_stateful(previous, codePoint, &state_);
  }

 private:
  static bool isAscii(utf8proc_int32_t codePoint) { return codePoint < 0x80; }

  utf8proc_int32_t previous_ = '\n';  // after which every cluster begins
  utf8proc_int32_t state_ = 0;
};

}  // namespace notewick
