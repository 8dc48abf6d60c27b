#pragma once

#import <AppKit/AppKit.h>

#include <string>

namespace notewick {

// Small factories for the controls of the panels.

/// A line of text that cannot be edited.
[[nodiscard]] NSTextField* label(const std::string& text, NSFont* font, NSColor* colour);

/// The same, broken into lines no wider than `width`. The mouse selects its text for copying; the
/// tabulator key passes it by.
[[nodiscard]] NSTextField* wrappingLabel(const std::string& text, NSFont* font, NSColor* colour,
                                         CGFloat width);

/// Shows a text in a label. A screen reader speaks it at once where it differs from what stood
/// there.
void announce(NSTextField* label, const std::string& text);

/// A push button; screen readers call it `accessibilityLabel`.
[[nodiscard]] NSButton* pushButton(const std::string& title, const std::string& accessibilityLabel,
                                   id target, SEL action);

/// The same in the small size, its title in the font of that size.
[[nodiscard]] NSButton* smallPushButton(const std::string& title,
                                        const std::string& accessibilityLabel, id target,
                                        SEL action);

/// Views below each other, their leading edges aligned. Hidden ones give up their room.
[[nodiscard]] NSStackView* column(NSArray<NSView*>* views, CGFloat spacing);

/// A view that keeps its room while it is hidden, also within a stack view.
[[nodiscard]] NSView* keepingItsRoom(NSView* view);

/// Views below each other as a window's content view, `inset` from all four edges.
[[nodiscard]] NSStackView* contentColumn(NSArray<NSView*>* views, CGFloat spacing, CGFloat inset);

/// Views beside each other.
[[nodiscard]] NSStackView* row(NSArray<NSView*>* views, CGFloat spacing);

void fixWidth(NSView* view, CGFloat width);
void fixHeight(NSView* view, CGFloat height);

}  // namespace notewick
