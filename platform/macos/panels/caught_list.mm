#include "platform/macos/panels/caught_list.h"

#include "platform/macos/controls/controls.h"

namespace notewick {
namespace {

constexpr CGFloat LONGEST_TEXT = 190;

}  // namespace

bool repeatsClick(NSEvent* event) {
  return event.type == NSEventTypeLeftMouseUp && event.clickCount % 2 == 0;
}

CaughtList::CaughtList(const QuickNoteTexts& texts, id<NWCaughtListTarget> target)
    : logTitle_(texts.log), skipTitle_(texts.skip), target_(target), stack_(column(@[], 4)) {
  stack_.hidden = YES;
}

bool CaughtList::setRows(const std::vector<CaughtRow>& rows,
                         const std::optional<std::string>& more) {
  if (rows == rows_ && more == more_) return false;
  rows_ = rows;
  more_ = more;
  clear();
  for (std::size_t tag = 0; tag < rows.size(); ++tag) {
    [stack_ addArrangedSubview:row(rows[tag], tag)];
  }
  if (more) {
    [stack_
        addArrangedSubview:label(*more, [NSFont systemFontOfSize:10], NSColor.tertiaryLabelColor)];
  }
  stack_.hidden = rows.empty();
  return true;
}

void CaughtList::clear() {
  for (NSButton* button in buttons_) button.action = nullptr;
  [buttons_ removeAllObjects];
  for (NSView* view in [stack_.arrangedSubviews copy]) {
    [stack_ removeArrangedSubview:view];
    [view removeFromSuperview];
  }
}

NSView* CaughtList::row(const CaughtRow& content, std::size_t tag) {
  NSTextField* text = label(content.text, [NSFont systemFontOfSize:11], NSColor.labelColor);
  text.lineBreakMode = NSLineBreakByTruncatingTail;
  [text.widthAnchor constraintLessThanOrEqualToConstant:LONGEST_TEXT].active = YES;
  NSButton* log = button(logTitle_, content.logLabel, @selector(caughtLog:), tag);
  NSButton* skip = button(skipTitle_, content.skipLabel, @selector(caughtSkip:), tag);
  return notewick::row(@[ text, log, skip ], 6);
}

NSButton* CaughtList::button(const std::string& title, const std::string& accessibilityLabel,
                             SEL action, std::size_t tag) {
  NSButton* button = smallPushButton(title, accessibilityLabel, target_, action);
  button.tag = static_cast<NSInteger>(tag);
  [buttons_ addObject:button];
  return button;
}

}  // namespace notewick
