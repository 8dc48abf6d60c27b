#include "platform/linux/tray/menu_steps.h"

#include <algorithm>
#include <span>

namespace notewick {
namespace {

using Items = std::span<const MenuItem>;

constexpr std::size_t REACH = 32;  // how far an equal item is looked for

/// How many items stand before the one that is equal to `item`; REACH when none is near.
std::size_t distanceTo(const MenuItem& item, Items items) {
  const Items near = items.first(std::min(items.size(), REACH));
  const auto found = std::find(near.begin(), near.end(), item);
  return found == near.end() ? REACH : static_cast<std::size_t>(found - near.begin());
}

bool differInTitleOnly(MenuItem drawn, const MenuItem& wanted) {
  drawn.title = wanted.title;
  return drawn == wanted;
}

std::vector<MenuStep> removalsAndInsertions(Items drawn, Items wanted) {
  std::vector<MenuStep> steps;
  for (std::size_t place = 0; !drawn.empty() || place < wanted.size();) {
    const Items ahead = wanted.subspan(place);
    if (!drawn.empty() && !ahead.empty() && drawn.front() == ahead.front()) {
      drawn = drawn.subspan(1);
      ++place;
    } else if (ahead.empty() || (!drawn.empty() && distanceTo(ahead.front(), drawn) <=
                                                       distanceTo(drawn.front(), ahead))) {
      drawn = drawn.subspan(1);
      steps.push_back({MenuStep::Kind::remove, place});
    } else {
      steps.push_back({MenuStep::Kind::insert, place++});
    }
  }
  return steps;
}

}  // namespace

std::vector<MenuStep> stepsBetween(const Menu& drawn, const Menu& wanted) {
  std::vector<MenuStep> steps = removalsAndInsertions(drawn, wanted);
  if (steps.size() != 2 || drawn.size() != wanted.size()) return steps;
  const std::size_t place = steps.front().place;
  const bool inOnePlace = steps.back().place == place;
  if (!inOnePlace || !differInTitleOnly(drawn[place], wanted[place])) return steps;
  return {{MenuStep::Kind::retitle, place}};
}

}  // namespace notewick
