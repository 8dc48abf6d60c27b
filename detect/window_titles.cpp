#include "detect/window_titles.h"

#include <algorithm>

#include "platform/ports.h"

namespace notewick {
namespace {

void addTitle(std::vector<std::string>& titles, ScreenWindow& window) {
  auto title = window.title();
  if (!title || title->empty()) return;
  if (std::find(titles.begin(), titles.end(), *title) != titles.end()) return;
  titles.push_back(std::move(*title));
}

}  // namespace

std::optional<FrontmostTitles> frontmostWindowTitles() {
  const auto application = ports().screen.frontmostApplication();
  if (!application) return std::nullopt;
  FrontmostTitles seen{application->localizedName().value_or("?"), {}};
  if (const auto focused = application->focusedWindow()) addTitle(seen.titles, *focused);
  const auto windows = application->windows();
  for (std::size_t index = 0; index < std::min(windows.size(), MOST_WINDOWS); ++index) {
    addTitle(seen.titles, *windows[index]);
  }
  return seen;
}

}  // namespace notewick
