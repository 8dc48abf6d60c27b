#pragma once

#import <AppKit/AppKit.h>

/// A panel whose default button Command-Return presses, whatever has the keyboard: a text view
/// keeps Return for itself. A key that is held down presses it once.
@interface NWNoteWindow : NSPanel
@end
