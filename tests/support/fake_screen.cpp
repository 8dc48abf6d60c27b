#include "tests/support/fake_screen.h"

namespace notewick {

std::optional<FrontmostApplication> FakeScreen::frontmostApplication(std::size_t mostWindows) {
  ++applicationReads;
  if (whileReading) whileReading();
  auto read = application_;
  if (read && read->titles.size() > mostWindows) read->titles.resize(mostWindows);
  return read;
}

void FakeScreen::show(const std::string& name, const std::vector<std::string>& titles) {
  FrontmostApplication shown{name, std::nullopt, {}};
  if (!titles.empty()) shown.focusedTitle = titles.front();
  shown.titles.assign(titles.begin(), titles.end());
  show(std::move(shown));
}

}  // namespace notewick
