#include "platform/linux/wayland/toplevel_screen.h"

#include <utility>

namespace notewick {

ToplevelScreen::ToplevelScreen(std::unique_ptr<ForeignToplevels> toplevels)
    : toplevels_(std::move(toplevels)) {}

std::optional<FrontmostApplication> ToplevelScreen::frontmostApplication(std::size_t mostWindows) {
  const bool isConnected = toplevels_ && toplevels_->update();
  if (!isConnected) toplevels_ = ForeignToplevels::open(Deadline(sampleLimit));
  if (!toplevels_) return std::nullopt;
  auto frontmost = toplevels_->list().frontmost(mostWindows);
  if (frontmost && frontmost->name) frontmost->name = names_.nameOf(*frontmost->name);
  return frontmost;
}

}  // namespace notewick
