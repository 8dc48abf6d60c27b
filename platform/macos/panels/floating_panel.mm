#include "platform/macos/panels/floating_panel.h"

#include <cmath>
#include <vector>

#include "platform/panel_placement.h"

namespace notewick {
namespace {

// Turns the desktop upside down: AppKit's y grows upwards.
Frame frameOf(NSRect rect) { return {NSMinX(rect), -NSMaxY(rect), NSWidth(rect), NSHeight(rect)}; }

NSRect rectOf(const Frame& frame) {
  return NSMakeRect(frame.x, -(frame.y + frame.height), frame.width, frame.height);
}

/// Gives the panel this size, in one step with the place that suits it.
void stand(NSPanel* panel, NSSize size) {
  std::vector<Frame> screens;
  for (NSScreen* screen in NSScreen.screens) screens.push_back(frameOf(screen.visibleFrame));
  const Frame frame = standingWhere(frameOf(panel.frame), size.width, size.height, screens);
  if (!NSEqualRects(rectOf(frame), panel.frame)) [panel setFrame:rectOf(frame) display:YES];
}

}  // namespace

void fitToContents(NSPanel* panel) {
  const NSSize contents = panel.contentView.fittingSize;
  const NSRect inside = NSMakeRect(0, 0, std::ceil(contents.width), std::ceil(contents.height));
  const NSSize wanted = [panel frameRectForContentRect:inside].size;
  if (!NSEqualSizes(wanted, panel.frame.size)) stand(panel, wanted);
}

void pullOntoScreen(NSPanel* panel) { stand(panel, panel.frame.size); }

}  // namespace notewick
