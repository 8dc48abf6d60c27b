#include "platform/linux/wayland/toplevel_list.h"

#include <algorithm>
#include <utility>

namespace notewick {

void ToplevelList::set(Id id, ToplevelState state) {
  auto entry = std::ranges::find(entries_, id, &Entry::id);
  const bool becomesActive = state.isActive && (entry == entries_.end() || !entry->state.isActive);
  if (entry == entries_.end()) entry = entries_.insert(entry, {id, {}});
  entry->state = std::move(state);
  if (becomesActive) std::rotate(entries_.begin(), entry, std::next(entry));
}

void ToplevelList::remove(Id id) {
  std::erase_if(entries_, [id](const Entry& entry) { return entry.id == id; });
}

std::optional<FrontmostApplication> ToplevelList::frontmost(std::size_t mostWindows) const {
  const auto active =
      std::ranges::find_if(entries_, [](const Entry& entry) { return entry.state.isActive; });
  if (active == entries_.end()) return std::nullopt;

  const auto& applicationId = active->state.applicationId;
  FrontmostApplication frontmost{std::nullopt, active->state.title, {}};
  if (!applicationId.empty()) frontmost.name = applicationId;
  for (const auto& [id, state] : entries_) {
    if (frontmost.titles.size() == mostWindows) break;
    const bool belongs =
        id == active->id || (!applicationId.empty() && state.applicationId == applicationId);
    if (belongs) frontmost.titles.emplace_back(state.title);
  }
  return frontmost;
}

}  // namespace notewick
