#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/quick_note_panel.h"

/// What the buttons of the rows call; the sender's tag is the index of its row.
@protocol NWCaughtListTarget <NSObject>
- (void)caughtLog:(NSButton*)sender;
- (void)caughtSkip:(NSButton*)sender;
@end

namespace notewick {

/// Whether the event ends the second click of a double click. The first has skipped a row, and
/// another has come under the mouse.
[[nodiscard]] bool repeatsClick(NSEvent* event);

/// The rows of caught work, each a text and two small buttons, and the line below them. Rows are
/// made anew only when one of them has changed, and then all of them; buttons of old rows do
/// nothing any more, so that a press that began on one row never counts for another that took its
/// place.
class CaughtList {
 public:
  CaughtList(const QuickNoteTexts& texts, id<NWCaughtListTarget> target);

  /// The list, hidden while it has no rows.
  [[nodiscard]] NSView* view() const { return stack_; }

  /// True when the rows were made anew.
  bool setRows(const std::vector<CaughtRow>& rows, const std::optional<std::string>& more);

 private:
  void clear();
  [[nodiscard]] NSView* row(const CaughtRow& content, std::size_t tag);
  [[nodiscard]] NSButton* button(const std::string& title, const std::string& accessibilityLabel,
                                 SEL action, std::size_t tag);

  std::string logTitle_;
  std::string skipTitle_;
  id<NWCaughtListTarget> target_;
  NSStackView* stack_;
  NSMutableArray<NSButton*>* buttons_ = [NSMutableArray array];
  std::vector<CaughtRow> rows_;
  std::optional<std::string> more_;
};

}  // namespace notewick
