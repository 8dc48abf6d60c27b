#include "detect/window_titles.h"

#include <algorithm>

#include "model/unicode.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr std::size_t MOST_WINDOWS = 8;

void addTitle(std::vector<std::string>& titles, const std::optional<std::string>& read) {
  if (!read || read->empty()) return;
  std::string title = validUtf8(*read);
  if (std::ranges::find(titles, title) == titles.end()) titles.push_back(std::move(title));
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
