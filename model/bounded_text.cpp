#include "model/bounded_text.h"

#include "model/cluster_breaks.h"
#include "model/code_points.h"

namespace notewick {
namespace {

/// The length of the whole clusters at the beginning of `text` that are within the bound.
std::size_t keptLength(std::string_view text, const TextBound& bound) {
  ClusterBreaks breaks;
  std::size_t clusters = 0;
  std::size_t clusterStart = 0;
  std::size_t place = 0;
  while (place < text.size()) {
    const CodePoint next = firstCodePoint(text.substr(place));
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
