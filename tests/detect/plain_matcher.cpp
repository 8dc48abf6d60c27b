#include "tests/detect/plain_matcher.h"

#include <utf8proc.h>

#include <stdexcept>

namespace notewick {
namespace {

using CodePoints = std::u32string;

CodePoints decoded(const std::string& text) {
  CodePoints points;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  for (std::size_t place = 0; place < text.size();) {
    utf8proc_int32_t point;
    const auto length =
        utf8proc_iterate(bytes + place, utf8proc_ssize_t(text.size() - place), &point);
    if (length <= 0) throw std::invalid_argument("not UTF-8");
    points.push_back(char32_t(point));
    place += std::size_t(length);
  }
  return points;
}

CodePoints lower(const CodePoints& text) {
  CodePoints result;
  for (const auto point : text) {
    if (point == U'\u0130')
      result += U"i\u0307";
    else
      result += char32_t(utf8proc_tolower(utf8proc_int32_t(point)));
  }
  return result;
}

/// Normalisation Form D by definition: full decomposition, then marks sorted by class.
CodePoints decomposed(const CodePoints& text) {
  CodePoints result;
  for (const auto point : text) {
    utf8proc_int32_t parts[8];
    int lastClass = 0;
    const auto count =
        utf8proc_decompose_char(utf8proc_int32_t(point), parts, 8, UTF8PROC_DECOMPOSE, &lastClass);
    for (int part = 0; part < count; ++part) result += char32_t(parts[part]);
  }
  const auto classOf = [&](std::size_t place) {
    return utf8proc_get_property(utf8proc_int32_t(result[place]))->combining_class;
  };
  for (std::size_t place = 1; place < result.size(); ++place)
    for (auto mark = place; mark > 0 && classOf(mark) > 0 && classOf(mark - 1) > classOf(mark);
         --mark)
      std::swap(result[mark - 1], result[mark]);
  return result;
}

CodePoints trimmed(CodePoints name) {
  const auto isBlank = [](char32_t point) {
    return point == U'\t' || utf8proc_category(utf8proc_int32_t(point)) == UTF8PROC_CATEGORY_ZS;
  };
  while (!name.empty() && isBlank(name.back())) name.pop_back();
  while (!name.empty() && isBlank(name.front())) name.erase(0, 1);
  return name;
}

std::vector<bool> clusterEdges(const CodePoints& text) {
  std::vector<bool> edges(text.size() + 1, true);
  utf8proc_int32_t state = 0;
  for (std::size_t place = 1; place < text.size(); ++place)
    edges[place] = utf8proc_grapheme_break_stateful(utf8proc_int32_t(text[place - 1]),
                                                    utf8proc_int32_t(text[place]), &state);
  return edges;
}

bool contains(const CodePoints& text, const std::vector<bool>& edges, const CodePoints& wanted) {
  for (auto at = text.find(wanted); at != CodePoints::npos; at = text.find(wanted, at + 1))
    if (edges[at] && edges[at + wanted.size()]) return true;
  return false;
}

}  // namespace

std::vector<std::size_t> plainMatch(const std::string& text,
                                    const std::vector<Participant>& participants) {
  const auto haystack = decomposed(lower(decoded(text)));
  const auto edges = clusterEdges(haystack);
  std::vector<std::size_t> found;
  for (std::size_t index = 0; index < participants.size(); ++index) {
    const auto first = trimmed(lower(decoded(participants[index].firstName)));
    const auto last = trimmed(lower(decoded(participants[index].lastName)));
    if (first.empty() || last.empty()) continue;
    if (contains(haystack, edges, decomposed(first + U" " + last)) ||
        contains(haystack, edges, decomposed(last + U", " + first)))
      found.push_back(index);
  }
  return found;
}

}  // namespace notewick
