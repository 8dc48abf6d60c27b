#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/records.h"
#include "platform/menu.h"

namespace notewick {

/// What the menu shows, read from the program's state at one moment.
struct MenuState {
  bool signedIn = false;
  std::optional<std::string> userEmail;
  bool trusted = false;
  bool paused = false;
  bool widgetVisible = true;
  std::size_t participantCount = 0;
  std::vector<Pending> pendings;
  std::size_t outboxCount = 0;
};

/// The whole menu, top to bottom.
[[nodiscard]] Menu makeMenu(const MenuState& state);

/// The status item's title: the product word, with the number of things that wait for the user or
/// the service.
[[nodiscard]] std::string statusTitle(std::size_t pendingCount, std::size_t outboxCount);

}  // namespace notewick
