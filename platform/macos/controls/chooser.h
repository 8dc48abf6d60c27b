#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <vector>

namespace notewick {

/// Brings the chooser's items to `titles`, no two of which are the same, with as few changes as a
/// list needs that the user may have open: an item that stays is not touched.
void setItems(NSPopUpButton* chooser, const std::vector<std::string>& titles);

/// Selects the item with that index, or none.
void selectItem(NSPopUpButton* chooser, std::optional<std::size_t> index);

/// The index of the selected item; absent when none is.
[[nodiscard]] std::optional<std::size_t> selectedItem(NSPopUpButton* chooser);

}  // namespace notewick
