#include "platform/macos/controls/controls.h"

#include "platform/macos/bridge/text.h"

/// AppKit leads the tabulator key to every text that can be selected.
@interface NWPassedByLabel : NSTextField
@end

@implementation NWPassedByLabel

- (BOOL)canBecomeKeyView {
  return NO;
}

@end

namespace notewick {
namespace {

NSStackView* stack(NSArray<NSView*>* views, NSUserInterfaceLayoutOrientation orientation,
                   CGFloat spacing) {
  NSStackView* stack = [NSStackView stackViewWithViews:views];
  stack.orientation = orientation;
  stack.spacing = spacing;
  return stack;
}

}  // namespace

NSTextField* label(const std::string& text, NSFont* font, NSColor* colour) {
  NSTextField* label = [NSTextField labelWithString:nsString(text)];
  label.font = font;
  label.textColor = colour;
  return label;
}

NSTextField* wrappingLabel(const std::string& text, NSFont* font, NSColor* colour, CGFloat width) {
  NSTextField* label = [NWPassedByLabel wrappingLabelWithString:nsString(text)];
  label.selectable = YES;
  label.font = font;
  label.textColor = colour;
  label.preferredMaxLayoutWidth = width;
  return label;
}

void announce(NSTextField* label, const std::string& text) {
  NSString* shown = nsString(text);
  if ([label.stringValue isEqual:shown]) return;
  label.stringValue = shown;
  if (text.empty() || !label.window.visible) return;
  NSAccessibilityPostNotificationWithUserInfo(
      label.window, NSAccessibilityAnnouncementRequestedNotification, @{
        NSAccessibilityAnnouncementKey : shown,
        NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)
      });
}

NSButton* pushButton(const std::string& title, const std::string& accessibilityLabel, id target,
                     SEL action) {
  NSButton* button = [NSButton buttonWithTitle:nsString(title) target:target action:action];
  button.bezelStyle = NSBezelStylePush;
  button.accessibilityLabel = nsString(accessibilityLabel);
  return button;
}

NSButton* smallPushButton(const std::string& title, const std::string& accessibilityLabel,
                          id target, SEL action) {
  NSButton* button = pushButton(title, accessibilityLabel, target, action);
  button.controlSize = NSControlSizeSmall;
  button.font = [NSFont systemFontOfSize:[NSFont systemFontSizeForControlSize:NSControlSizeSmall]];
  return button;
}

NSStackView* column(NSArray<NSView*>* views, CGFloat spacing) {
  NSStackView* column = stack(views, NSUserInterfaceLayoutOrientationVertical, spacing);
  column.alignment = NSLayoutAttributeLeading;
  return column;
}

NSView* keepingItsRoom(NSView* view) {
  NSStackView* room = column(@[ view ], 0);
  room.detachesHiddenViews = NO;
  return room;
}

NSStackView* contentColumn(NSArray<NSView*>* views, CGFloat spacing, CGFloat inset) {
  NSStackView* contents = column(views, spacing);
  contents.edgeInsets = NSEdgeInsetsMake(inset, inset, inset, inset);
  contents.translatesAutoresizingMaskIntoConstraints = YES;
  return contents;
}

NSStackView* row(NSArray<NSView*>* views, CGFloat spacing) {
  return stack(views, NSUserInterfaceLayoutOrientationHorizontal, spacing);
}

void fixWidth(NSView* view, CGFloat width) {
  [view.widthAnchor constraintEqualToConstant:width].active = YES;
}

void fixHeight(NSView* view, CGFloat height) {
  [view.heightAnchor constraintEqualToConstant:height].active = YES;
}

}  // namespace notewick
