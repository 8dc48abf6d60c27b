#include "platform/linux/wayland/toplevel_list.h"

#include <algorithm>
#include <utility>

#include "platform/linux/titles/title_text.h"

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

std::optional<ScreenSnapshot> ToplevelList::frontmost() const {
  const auto active =
      std::ranges::find_if(entries_, [](const Entry& entry) { return entry.state.isActive; });
  if (active == entries_.end()) return std::nullopt;

  const auto& applicationId = active->state.applicationId;
  ScreenSnapshot snapshot;
  if (!applicationId.empty()) snapshot.name = repairedUtf8(applicationId);
  snapshot.focusedTitle = repairedUtf8(active->state.title);
  for (const auto& [id, state] : entries_) {
    const bool belongs =
        id == active->id || (!applicationId.empty() && state.applicationId == applicationId);
    if (belongs) snapshot.titles.push_back(repairedUtf8(state.title));
    if (snapshot.titles.size() == MOST_WINDOWS) break;
  }
  return snapshot;
}

}  // namespace notewick
