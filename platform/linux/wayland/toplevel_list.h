#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"

namespace notewick {

/// A window as the compositor describes it.
struct ToplevelState {
  std::string title;
  std::string applicationId;
  bool isActive = false;
};

/// The windows of a Wayland session, the one that was active last first. A compositor tells neither
/// process nor stacking order, so the application id says which windows belong together.
class ToplevelList {
 public:
  using Id = const void*;

  /// Adds the window or replaces what is known of it.
  void set(Id id, ToplevelState state);

  void remove(Id id);

  /// The application of the active window, by its id, with at most `mostWindows` of its windows;
  /// absent when none is active. A window without an application id is an application of its own.
  [[nodiscard]] std::optional<FrontmostApplication> frontmost(std::size_t mostWindows) const;

 private:
  struct Entry {
    Id id;
    ToplevelState state;
  };

  std::vector<Entry> entries_;
};

}  // namespace notewick
