#include "platform/linux/wayland/toplevel_screen.h"

#include <utility>

namespace notewick {

ToplevelScreen::ToplevelScreen(std::unique_ptr<ForeignToplevels> toplevels)
    : toplevels_(std::move(toplevels)) {}

std::unique_ptr<ScreenApplication> ToplevelScreen::frontmostApplication() {
  const bool isConnected = toplevels_ && toplevels_->update();
  if (!isConnected) toplevels_ = ForeignToplevels::open(Deadline(sampleLimit));
  if (!toplevels_) return nullptr;
  auto snapshot = toplevels_->list().frontmost();
  if (!snapshot) return nullptr;
  if (snapshot->name) snapshot->name = names_.nameOf(*snapshot->name);
  return applicationOf(std::move(*snapshot));
}

}  // namespace notewick
