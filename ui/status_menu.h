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

/// How many things wait for the user or the service. A sum that does not fit ends the program.
[[nodiscard]] std::size_t waitingCount(std::size_t pendingCount, std::size_t outboxCount);

/// The status item's title: the product word, with the number of things that wait.
[[nodiscard]] std::string statusTitle(std::size_t waiting);

}  // namespace notewick
