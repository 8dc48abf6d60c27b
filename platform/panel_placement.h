#pragma once

#include <vector>

namespace notewick {

/// A rectangle on the desktop; x grows to the right, y downwards, in points. Of a window it is the
/// outside, with title bar and borders; of a screen the part without the desktop's own bars.
struct Frame {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  bool operator==(const Frame&) const = default;
};

/// Where a panel stands that stood at `kept` and has this size now. It keeps the edges of `kept`
/// that are nearest to an edge of the screen, so that a panel at the bottom grows upwards, and is
/// pulled wholly onto the screen that shows most of `kept`, or is nearest to it. One larger than
/// the screen keeps its title bar there. Without screens it keeps `kept`'s top left corner.
[[nodiscard]] Frame standingWhere(const Frame& kept, double width, double height,
                                  const std::vector<Frame>& screens);

}  // namespace notewick
