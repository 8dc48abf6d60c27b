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
  std::vector<std::string> titles;  ///< of its windows, frontmost first, the focused included
};

/// An application that answers every read from the snapshot.
[[nodiscard]] std::unique_ptr<ScreenApplication> applicationOf(ScreenSnapshot snapshot);

/// How many windows of one application a body reads at most, so that a program with hundreds of
/// windows costs no more than others.
inline constexpr std::size_t maximumWindows = 16;

}  // namespace notewick
