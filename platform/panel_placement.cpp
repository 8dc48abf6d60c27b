#include "platform/panel_placement.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace notewick {
namespace {

struct Span {
  double low;
  double high;

  [[nodiscard]] double middle() const { return (low + high) / 2; }
};

Span across(const Frame& frame) {
  return {frame.x, frame.x + frame.width};
}

Span down(const Frame& frame) {
  return {frame.y, frame.y + frame.height};
}

double shared(Span one, Span other) {
  return std::max(std::min(one.high, other.high) - std::max(one.low, other.low), 0.0);
}

double sharedArea(const Frame& one, const Frame& other) {
  return shared(across(one), across(other)) * shared(down(one), down(other));
}

double distance(const Frame& one, const Frame& other) {
  return std::abs(across(one).middle() - across(other).middle()) +
         std::abs(down(one).middle() - down(other).middle());
}

const Frame& screenOf(const Frame& frame, const std::vector<Frame>& screens) {
  return *std::ranges::max_element(screens, {}, [&frame](const Frame& screen) {
    return std::tuple(sharedArea(screen, frame), -distance(screen, frame));
  });
}

/// Where a length begins that stood where `kept` did.
double standing(Span kept, double length, Span screen) {
  const double wanted = kept.middle() > screen.middle() ? kept.high - length : kept.low;
  return std::max(std::min(wanted, screen.high - length), screen.low);
}

}  // namespace

Frame standingWhere(const Frame& kept, double width, double height,
                    const std::vector<Frame>& screens) {
  if (screens.empty()) return {kept.x, kept.y, width, height};
  const Frame& screen = screenOf(kept, screens);
  return {standing(across(kept), width, across(screen)), standing(down(kept), height, down(screen)),
          width, height};
}

}  // namespace notewick
