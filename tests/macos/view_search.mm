#include "tests/macos/view_search.h"

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

// A stack view takes its hidden views out of the view hierarchy.
NSArray<NSView*>* insideOf(NSView* view) {
  if (![view isKindOfClass:NSStackView.class]) return view.subviews;
  return static_cast<NSStackView*>(view).arrangedSubviews;
}

void collect(NSView* view, Class kind, std::vector<NSView*>& found) {
  if ([view isKindOfClass:kind]) found.push_back(view);
  for (NSView* inner in insideOf(view)) collect(inner, kind, found);
}

}  // namespace

std::vector<NSView*> viewsOf(NSWindow* window, Class kind) {
  std::vector<NSView*> found;
  collect(window.contentView, kind, found);
  return found;
}

CGFloat laidOutWidth(NSView* view) {
  [view.window layoutIfNeeded];
  return NSWidth([view alignmentRectForFrame:view.frame]);
}

std::vector<NSButton*> buttons(NSWindow* window, const std::string& title) {
  std::vector<NSButton*> found;
  for (NSView* view : viewsOf(window, NSButton.class)) {
    NSButton* button = static_cast<NSButton*>(view);
    if (utf8(button.title) == title) found.push_back(button);
  }
  return found;
}

NSTextField* textField(NSWindow* window, const std::string& text) {
  for (NSView* view : viewsOf(window, NSTextField.class)) {
    NSTextField* field = static_cast<NSTextField*>(view);
    if (utf8(field.stringValue) == text) return field;
  }
  return nil;
}

}  // namespace notewick
