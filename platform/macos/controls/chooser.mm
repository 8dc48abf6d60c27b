#include "platform/macos/controls/chooser.h"

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

bool shows(NSPopUpButton* chooser, NSInteger index, NSString* title) {
  return index < chooser.numberOfItems && [[chooser itemTitleAtIndex:index] isEqual:title];
}

}  // namespace

void setItems(NSPopUpButton* chooser, const std::vector<std::string>& titles) {
  NSArray<NSString*>* wanted = nsStrings(titles);
  const auto count = static_cast<NSInteger>(wanted.count);
  for (NSInteger i = chooser.numberOfItems - 1; i >= 0; --i) {
    if (![wanted containsObject:[chooser itemTitleAtIndex:i]]) [chooser removeItemAtIndex:i];
  }
  for (NSInteger i = 0; i < count; ++i) {
    NSString* title = wanted[static_cast<NSUInteger>(i)];
    if (!shows(chooser, i, title)) [chooser insertItemWithTitle:title atIndex:i];
  }
  while (chooser.numberOfItems > count) [chooser removeItemAtIndex:count];
}

void selectItem(NSPopUpButton* chooser, std::optional<std::size_t> index) {
  const NSInteger wanted = index ? static_cast<NSInteger>(*index) : -1;
  if (chooser.indexOfSelectedItem != wanted) [chooser selectItemAtIndex:wanted];
}

std::optional<std::size_t> selectedItem(NSPopUpButton* chooser) {
  const NSInteger index = chooser.indexOfSelectedItem;
  if (index < 0) return std::nullopt;
  return static_cast<std::size_t>(index);
}

}  // namespace notewick
