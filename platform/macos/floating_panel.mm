#include "platform/macos/floating_panel.h"

#include <algorithm>

namespace notewick {
namespace {

NSScreen* screenShowing(NSRect frame) {
  NSScreen* best = NSScreen.mainScreen;
  CGFloat most = 0;
  for (NSScreen* screen in NSScreen.screens) {
    const NSSize shown = NSIntersectionRect(screen.visibleFrame, frame).size;
    if (shown.width * shown.height <= most) continue;
    most = shown.width * shown.height;
    best = screen;
  }
  return best;
}

struct Span {
  CGFloat low;
  CGFloat high;
};

/// Where `length` begins if it stands where `kept` stood, inside `bounds`.
CGFloat standing(Span kept, CGFloat length, Span bounds) {
  const bool nearHigh = kept.low + kept.high > bounds.low + bounds.high;
  const CGFloat wanted = nearHigh ? kept.high - length : kept.low;
  return std::min(std::max(wanted, bounds.low), bounds.high - length);
}

}  // namespace

void standWhere(NSPanel* panel, NSRect kept) {
  NSScreen* screen = screenShowing(kept);
  if (screen == nil) return;
  const NSRect visible = screen.visibleFrame;
  const NSSize size = panel.frame.size;
  const CGFloat x =
      standing({NSMinX(kept), NSMaxX(kept)}, size.width, {NSMinX(visible), NSMaxX(visible)});
  const CGFloat y =
      standing({NSMinY(kept), NSMaxY(kept)}, size.height, {NSMinY(visible), NSMaxY(visible)});
  [panel setFrameOrigin:NSMakePoint(x, y)];
}

void fitToContents(NSPanel* panel) {
  const NSRect kept = panel.frame;
  [panel layoutIfNeeded];
  [panel setContentSize:panel.contentView.fittingSize];
  if (!NSEqualSizes(panel.frame.size, kept.size)) standWhere(panel, kept);
}

}  // namespace notewick
