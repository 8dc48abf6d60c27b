#include "platform/macos/floating_panel.h"

#include <vector>

#include "platform/panel_placement.h"

namespace notewick {
namespace {

// Turns the desktop upside down: AppKit's y grows upwards.
Frame frameOf(NSRect rect) { return {NSMinX(rect), -NSMaxY(rect), NSWidth(rect), NSHeight(rect)}; }

NSPoint originOf(const Frame& frame) { return NSMakePoint(frame.x, -(frame.y + frame.height)); }

}  // namespace

void standWhere(NSPanel* panel, NSRect kept) {
  std::vector<Frame> screens;
  for (NSScreen* screen in NSScreen.screens) screens.push_back(frameOf(screen.visibleFrame));
  const NSSize size = panel.frame.size;
  [panel setFrameOrigin:originOf(standingWhere(frameOf(kept), size.width, size.height, screens))];
}

void fitToContents(NSPanel* panel) {
  const NSRect kept = panel.frame;
  [panel layoutIfNeeded];
  [panel setContentSize:panel.contentView.fittingSize];
  if (!NSEqualSizes(panel.frame.size, kept.size)) standWhere(panel, kept);
}

}  // namespace notewick
