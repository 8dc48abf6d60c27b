#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"

namespace notewick {

/// The frontmost application as one sample found it.
struct ScreenSnapshot {
  std::optional<std::string> name;
  std::optional<std::string> focusedTitle;  ///< absent when the window or its title is gone
  /// Of its windows, the focused included; absent where the title could not be read.
  std::vector<std::optional<std::string>> titles;
};

/// An application that answers every read from the snapshot.
[[nodiscard]] std::unique_ptr<ScreenApplication> applicationOf(ScreenSnapshot snapshot);

}  // namespace notewick
