#pragma once

#include <memory>

#include "platform/linux/titles/application_names.h"
#include "platform/linux/wayland/foreign_toplevels.h"
#include "platform/screen.h"

namespace notewick {

/// What is on screen under a Wayland compositor that tells about the windows of all programs. A
/// sample reads nothing but what has arrived already. When the compositor is gone nothing is
/// frontmost; each sample then tries once to find it again.
class ToplevelScreen final : public Screen {
 public:
  explicit ToplevelScreen(std::unique_ptr<ForeignToplevels> toplevels);

  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;

 private:
  std::unique_ptr<ForeignToplevels> toplevels_;
  ApplicationNames names_;
};

}  // namespace notewick
