#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace notewick {

/// All views of that class inside a window, in the order of the layout, hidden ones too.
[[nodiscard]] std::vector<NSView*> viewsOf(NSWindow* window, Class kind);

/// How wide the layout has made a view; its frame may be wider, for shadows.
[[nodiscard]] CGFloat laidOutWidth(NSView* view);

/// The buttons with that title, top to bottom.
[[nodiscard]] std::vector<NSButton*> buttons(NSWindow* window, const std::string& title);

/// The label or field that shows that text; nil when none does.
[[nodiscard]] NSTextField* textField(NSWindow* window, const std::string& text);

}  // namespace notewick
