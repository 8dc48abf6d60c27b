#include "platform/linux/atspi/atspi_screen.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/linux/titles/application_names.h"

namespace notewick {
namespace {

const QDBusObjectPath ROOT_PATH(QStringLiteral("/org/a11y/atspi/accessible/root"));

bool isListed(const QWindow& window) {
  return window.isVisible() && window.type() != Qt::Popup && window.type() != Qt::ToolTip;
}

/// This program itself, when one of its windows has the focus: while it waits for answers it cannot
/// give any.
std::optional<FrontmostApplication> ownApplication(std::size_t mostWindows) {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return std::nullopt;
  const auto* focused = QGuiApplication::focusWindow();
  if (focused == nullptr) return std::nullopt;
  FrontmostApplication own{OWN_NAME, focused->title().toStdString(), {}};
  for (const auto* window : QGuiApplication::topLevelWindows()) {
    if (own.titles.size() == mostWindows) break;
    if (isListed(*window)) own.titles.emplace_back(window->title().toStdString());
  }
  return own;
}

std::optional<std::string> textOf(const std::optional<QString>& name) {
  return name ? std::optional(name->toStdString()) : std::nullopt;
}

}  // namespace

AtspiScreen::AtspiScreen(std::shared_ptr<AtspiBus> bus, std::chrono::milliseconds limit)
    : bus_(std::move(bus)), limit_(limit) {
  connect(bus_.get(), &AtspiBus::windowActivated, this,
          [this](const QString& application) { activated_ = application; });
  connect(bus_.get(), &AtspiBus::renamed, this, &AtspiScreen::rename);
}

std::optional<FrontmostApplication> AtspiScreen::frontmostApplication(std::size_t mostWindows) {
  if (auto own = ownApplication(mostWindows)) {
    last_.reset();
    return own;
  }
  const auto bus = bus_->connection();
  last_ = bus ? look(*bus, mostWindows, Deadline(limit_)) : std::nullopt;
  if (!last_) return std::nullopt;
  activated_ = last_->active.application;
  bus_->follow(activated_);
  return last_->frontmost;
}

std::optional<AtspiScreen::Sighting> AtspiScreen::look(const QDBusConnection& bus,
                                                       std::size_t mostWindows,
                                                       const Deadline& deadline) {
  auto applications = reader_.applications(bus, deadline);
  const auto activated = std::ranges::find(applications, activated_, &AtspiReference::application);
  if (activated != applications.end()) {
    if (auto sighting = lookAt(bus, {*activated}, mostWindows, deadline)) return sighting;
    applications.erase(activated);
  }
  if (auto sighting = lookAt(bus, applications, mostWindows, deadline)) return sighting;
  return withoutAnswer();
}

std::optional<AtspiScreen::Sighting> AtspiScreen::withoutAnswer() {
  // Renamings that the application sent before it fell silent may have arrived during the wait.
  // Qt's bus thread has queued them for us; without this they would come after the sample.
  QCoreApplication::sendPostedEvents(bus_.get(), QEvent::MetaCall);
  const bool isStillRight =
      last_ && last_->active.application == activated_ && reader_.isSilent(activated_);
  if (!isStillRight) return std::nullopt;
  auto sighting = *last_;
  const bool wasAnswer = std::exchange(sighting.isAnswer, false);
  if (!wasAnswer) sighting.frontmost = {sighting.frontmost.name, std::nullopt, {}};
  return sighting;
}

std::optional<AtspiScreen::Sighting> AtspiScreen::lookAt(
    const QDBusConnection& bus, const std::vector<AtspiReference>& applications,
    std::size_t mostWindows, const Deadline& deadline) {
  const auto windows = reader_.windows(bus, applications, deadline);
  const auto active = std::ranges::find_if(windows, &AtspiReader::Window::isActive);
  if (active == windows.end()) return std::nullopt;
  std::vector<AtspiReference> readable;
  for (const auto& [window, isActive] : windows) {
    const bool belongs = window.application == active->reference.application;
    if (belongs && readable.size() < mostWindows) readable.push_back(window);
  }
  return read(bus, active->reference, std::move(readable), deadline);
}

std::optional<AtspiScreen::Sighting> AtspiScreen::read(const QDBusConnection& bus,
                                                       const AtspiReference& active,
                                                       std::vector<AtspiReference> windows,
                                                       const Deadline& deadline) {
  std::vector<AtspiReference> asked{{active.application, ROOT_PATH}, active};
  asked.insert(asked.end(), windows.begin(), windows.end());
  const auto names = reader_.names(bus, asked, deadline);
  if (reader_.isSilent(active.application)) return std::nullopt;

  FrontmostApplication frontmost{textOf(names[0]), textOf(names[1]), {}};
  if (frontmost.name == "") frontmost.name.reset();
  std::transform(names.begin() + 2, names.end(), std::back_inserter(frontmost.titles), textOf);
  return Sighting{active, std::move(windows), std::move(frontmost)};
}

void AtspiScreen::rename(const QString& application, const QString& path, const QString& name) {
  if (!last_ || last_->active.application != application) return;
  auto& [appName, focusedTitle, titles] = last_->frontmost;
  if (last_->active.path.path() == path) focusedTitle = name.toStdString();
  for (std::size_t i = 0; i < titles.size(); ++i) {
    if (last_->windows[i].path.path() == path) titles[i] = name.toStdString();
  }
}

}  // namespace notewick
