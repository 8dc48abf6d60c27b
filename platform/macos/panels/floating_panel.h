#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/panels/window_drag.h"

namespace notewick {

/// Gives the panel the size that its content view asks for, and keeps it in its place.
void fitToContents(NSPanel* panel);

/// Pulls the panel wholly onto a screen (platform/panel_placement.h).
void pullOntoScreen(NSPanel* panel);

/// What both panels do alike, over a panel that the derived class has built. The window is not
/// destroyed before this object, which must not be destroyed inside a call to a delegate.
template <class Port>
class CocoaPanel : public Port {
 public:
  explicit CocoaPanel(NSPanel* panel) : panel_(panel) {}
  CocoaPanel(const CocoaPanel&) = delete;
  ~CocoaPanel() override {
    panel_.delegate = nil;
    [panel_ close];
  }

  void orderFrontRegardless() override { [panel_ orderFrontRegardless]; }
  void makeKeyAndOrderFront() override { [panel_ makeKeyAndOrderFront:nil]; }
  void orderOut() override { [panel_ orderOut:nil]; }

  /// The native panel, for tests.
  [[nodiscard]] NSPanel* native() const { return panel_; }

 protected:
  NSPanel* const panel_;
  WindowDrag drag_{panel_};
};

}  // namespace notewick
