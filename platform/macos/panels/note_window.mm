#include "platform/macos/panels/note_window.h"

namespace {

constexpr NSEventModifierFlags MODIFIERS = NSEventModifierFlagCommand | NSEventModifierFlagControl |
                                           NSEventModifierFlagOption | NSEventModifierFlagShift;

bool isCommandReturn(NSEvent* event) {
  NSString* key = event.charactersIgnoringModifiers;
  const bool isReturn = [key isEqual:@"\r"] || [key isEqual:@"\x03"];  // the latter on the keypad
  return isReturn && (event.modifierFlags & MODIFIERS) == NSEventModifierFlagCommand;
}

}  // namespace

@implementation NWNoteWindow

- (BOOL)performKeyEquivalent:(NSEvent*)event {
  if (!isCommandReturn(event)) return [super performKeyEquivalent:event];
  if (!event.ARepeat) [self.defaultButtonCell performClick:nil];
  return YES;
}

@end
