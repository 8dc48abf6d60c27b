#include "detect/window_titles.h"

#include <algorithm>

#include "model/unicode.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr std::size_t MOST_WINDOWS = 8;

void addTitle(std::vector<std::string>& titles, const std::optional<std::string>& read) {
  if (!read) return;
  std::string title = validUtf8(std::string_view(*read).substr(0, read->find('\0')));
  if (title.empty() || std::ranges::find(titles, title) != titles.end()) return;
  titles.push_back(std::move(title));
}

}  // namespace

std::optional<FrontmostTitles> frontmostWindowTitles() {
  const auto application = ports().screen.frontmostApplication(MOST_WINDOWS);
  if (!application) return std::nullopt;
  FrontmostTitles seen{validUtf8(application->name.value_or("?")), {}};
  addTitle(seen.titles, application->focusedTitle);
  for (const auto& title : application->titles) addTitle(seen.titles, title);
  return seen;
}

}  // namespace notewick
