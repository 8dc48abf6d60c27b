#pragma once

#include <cstddef>
#include <vector>

#include "platform/menu.h"

namespace notewick {

/// One step on the way from a drawn menu to another. The steps go from top to bottom, so that after
/// each of them the items down to its place are those of the wanted menu.
struct MenuStep {
  enum class Kind {
    retitle,  ///< the item at this place gets the title of the wanted one; all else in it is equal
    remove,   ///< the item at this place goes
    insert    ///< the wanted item of this place is put before the one that stands there
  };

  Kind kind;
  std::size_t place;

  friend bool operator==(const MenuStep&, const MenuStep&) = default;
};

/// The steps that make `wanted` of `drawn`; none when they are equal. A title is changed in place
/// only where that is the single difference: then a click on the old title still means the same
/// command on the same object. Few steps are found for the differences that the program makes,
/// whatever the length of the menu; the number is not the least for any two menus.
[[nodiscard]] std::vector<MenuStep> stepsBetween(const Menu& drawn, const Menu& wanted);

}  // namespace notewick
