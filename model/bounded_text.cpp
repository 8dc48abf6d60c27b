#include "model/bounded_text.h"

#include "model/cluster_breaks.h"

namespace notewick {
namespace {

struct CodePoint {
  utf8proc_int32_t value;
  std::size_t length;  ///< in bytes
};

CodePoint firstOf(std::string_view text) {
  constexpr CodePoint ILL_FORMED{0xFFFD, 1};
  utf8proc_int32_t value = 0;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &value);
  return length > 0 ? CodePoint{value, static_cast<std::size_t>(length)} : ILL_FORMED;
}

/// The length of the whole clusters at the beginning of `text` that are within the bound.
std::size_t keptLength(std::string_view text, const TextBound& bound) {
  ClusterBreaks breaks;
  std::size_t clusters = 0;
  std::size_t clusterStart = 0;
  std::size_t place = 0;
  while (place < text.size()) {
    const CodePoint next = firstOf(text.substr(place));
    if (breaks.before(next.value)) {
      clusterStart = place;
      if (++clusters > bound.clusters) return clusterStart;
    }
    place += next.length;
    if (place > bound.bytes) return clusterStart;
  }
  return place;
}

}  // namespace

std::string boundedText(std::string_view text, const TextBound& bound) {
  const std::size_t length = keptLength(text, bound);
  std::string kept(text.substr(0, length));
  if (length < text.size()) kept += "…";
  return kept;
}

}  // namespace notewick
