#include "platform/linux/x11/x11_screen.h"

#include <algorithm>
#include <span>
#include <utility>

#include "platform/linux/titles/title_text.h"

namespace notewick {
namespace {

/// No desktop has more; what lies deeper in the stack is left out.
constexpr std::size_t MAXIMUM_STACK = 512;

std::vector<X11PropertyQuery> queriesFor(const std::vector<std::uint32_t>& windows,
                                         std::span<const X11Atom> properties) {
  std::vector<X11PropertyQuery> queries;
  for (const auto window : windows) {
    for (const auto property : properties) queries.push_back({window, property});
  }
  return queries;
}

}  // namespace

X11Screen::X11Screen(std::unique_ptr<X11Connection> connection, std::chrono::milliseconds limit)
    : connection_(std::move(connection)), limit_(limit) {}

std::optional<FrontmostApplication> X11Screen::frontmostApplication(std::size_t mostWindows) {
  const Deadline deadline(limit_);
  const auto desktop = readDesktop(deadline);
  if (!desktop) return std::nullopt;
  const auto application = readApplication(*desktop, mostWindows, deadline);
  if (!application) return std::nullopt;

  FrontmostApplication frontmost;
  frontmost.name = nameOf(*application);
  auto windows = application->windows;
  windows.push_back(desktop->active);
  frontmost.titles = readTitles(windows, deadline);
  frontmost.focusedTitle = std::move(frontmost.titles.back());
  frontmost.titles.pop_back();
  return frontmost;
}

std::optional<X11Screen::Desktop> X11Screen::readDesktop(const Deadline& deadline) {
  const auto root = connection_->rootWindow();
  const auto properties = connection_->read({{root, X11Atom::netActiveWindow},
                                             {root, X11Atom::netClientListStacking},
                                             {root, X11Atom::netClientList},
                                             {root, X11Atom::netSupportingWmCheck}},
                                            deadline);
  if (isGone(properties)) return std::nullopt;
  Desktop desktop;
  // NOLINTBEGIN(bugprone-unchecked-optional-access): where nothing is gone everything is there
  desktop.active = properties[0]->firstNumber().value_or(0);
  if (desktop.active == 0) return std::nullopt;
  desktop.windows = properties[properties[1]->exists() ? 1 : 2]->numbers();
  std::reverse(desktop.windows.begin(), desktop.windows.end());
  if (desktop.windows.size() > MAXIMUM_STACK) desktop.windows.resize(MAXIMUM_STACK);
  desktop.managerCheck = properties[3]->firstNumber().value_or(root);
  // NOLINTEND(bugprone-unchecked-optional-access)
  return desktop;
}

std::optional<X11Screen::Application> X11Screen::readApplication(const Desktop& desktop,
                                                                 std::size_t mostWindows,
                                                                 const Deadline& deadline) {
  std::vector<Window> windows{desktop.active};
  windows.insert(windows.end(), desktop.windows.begin(), desktop.windows.end());
  auto queries = queriesFor(windows, IDENTITY_PROPERTIES);
  queries.push_back({desktop.managerCheck, X11Atom::netSupportingWmCheck});
  const auto properties = connection_->read(queries, deadline);
  const auto identityOf = [&](std::size_t index) {
    constexpr auto COUNT = IDENTITY_PROPERTIES.size();
    return identityIn(connection_->clientOf(windows[index]),
                      X11Properties(properties).subspan(index * COUNT, COUNT));
  };

  const auto active = identityOf(0);
  const bool managerIsGone = !properties.back();
  if (!active || managerIsGone) return std::nullopt;
  Application application{active->wmClass, {}};
  for (std::size_t i = 1; i < windows.size() && application.windows.size() < mostWindows; ++i) {
    const auto identity = identityOf(i);
    if (identity && isSameApplication(*identity, *active))
      application.windows.push_back(windows[i]);
  }
  return application;
}

std::vector<std::optional<std::string>> X11Screen::readTitles(const std::vector<Window>& windows,
                                                              const Deadline& deadline) {
  const auto properties = connection_->readWhole(queriesFor(windows, TITLE_PROPERTIES), deadline);
  std::vector<std::optional<std::string>> titles;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    constexpr auto COUNT = TITLE_PROPERTIES.size();
    titles.push_back(titleIn(X11Properties(properties).subspan(i * COUNT, COUNT)));
  }
  return titles;
}

std::optional<std::string> X11Screen::nameOf(const Application& application) {
  const auto name = classPart(application.wmClass);
  if (name.empty()) return std::nullopt;
  return names_.nameOf(decodedText(name, TextEncoding::latin1));
}

}  // namespace notewick
