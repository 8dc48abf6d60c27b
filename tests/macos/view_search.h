#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace notewick {

/// All views of that class inside a window, in the order of the layout, hidden ones too.
[[nodiscard]] std::vector<NSView*> viewsOf(NSWindow* window, Class kind);

/// The buttons with that title, top to bottom.
[[nodiscard]] std::vector<NSButton*> buttons(NSWindow* window, const std::string& title);

/// The label or field that shows that text; nil when none does.
[[nodiscard]] NSTextField* textField(NSWindow* window, const std::string& text);

}  // namespace notewick
