#pragma once

#import <AppKit/AppKit.h>

namespace notewick {

/// The keyboard while a window of this program has it on loan from the program that was in front.
/// An accessory stays in front when its window goes, and what the user types is lost until a click.
class BorrowedKeyboard {
 public:
  /// Remembers the program that is in front, unless it is this one.
  void remember();

  /// Brings this program to the front.
  void take();

  /// Brings the program remembered back to the front, when this one still is.
  void giveBack();

 private:
  NSRunningApplication* owner_ = nil;
};

}  // namespace notewick
