#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "platform/macos/bridge/text.h"

namespace notewick {

/// Collects all views of that class from a view on, in the order of the layout, hidden ones too.
inline void collectViews(NSView* view, Class kind, std::vector<NSView*>& found) {
  if ([view isKindOfClass:kind]) found.push_back(view);
  // A stack view takes its hidden views out of the view hierarchy.
  const bool isStack = [view isKindOfClass:NSStackView.class];
  for (NSView* inner in isStack ? static_cast<NSStackView*>(view).arrangedSubviews
                                : view.subviews) {
    collectViews(inner, kind, found);
  }
}

[[nodiscard]] inline std::vector<NSView*> viewsOf(NSWindow* window, Class kind) {
  std::vector<NSView*> found;
  collectViews(window.contentView, kind, found);
  return found;
}

/// The buttons with that title, top to bottom.
[[nodiscard]] inline std::vector<NSButton*> buttons(NSWindow* window, const std::string& title) {
  std::vector<NSButton*> found;
  for (NSView* view : viewsOf(window, NSButton.class)) {
    NSButton* button = static_cast<NSButton*>(view);
    if (utf8(button.title) == title) found.push_back(button);
  }
  return found;
}

/// The label or field that shows that text; nil when none does.
[[nodiscard]] inline NSTextField* textField(NSWindow* window, const std::string& text) {
  for (NSView* view : viewsOf(window, NSTextField.class)) {
    NSTextField* field = static_cast<NSTextField*>(view);
    if (utf8(field.stringValue) == text) return field;
  }
  return nil;
}

}  // namespace notewick
