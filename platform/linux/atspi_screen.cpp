#include "platform/linux/atspi_screen.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace notewick {
namespace {

const QDBusObjectPath rootPath(QStringLiteral("/org/a11y/atspi/accessible/root"));

/// This program itself, when one of its windows has the focus: while it waits for answers it cannot
/// give any.
std::optional<ScreenSnapshot> ownSnapshot() {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return std::nullopt;
  const auto* focused = QGuiApplication::focusWindow();
  if (focused == nullptr) return std::nullopt;
  const auto title = focused->title().toStdString();
  return ScreenSnapshot{QGuiApplication::applicationDisplayName().toStdString(), title, {title}};
}

/// How long a program may be silent and still count as the active one.
constexpr std::chrono::minutes patienceWithSilence{2};

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

std::unique_ptr<ScreenApplication> AtspiScreen::frontmostApplication() {
  if (auto own = ownSnapshot()) {
    last_.reset();
    return applicationOf(std::move(*own));
  }
  const auto bus = bus_->connection();
  last_ = bus ? look(*bus, Deadline(limit_)) : std::nullopt;
  if (!last_) return nullptr;
  activated_ = last_->application;
  bus_->follow(activated_);
  return applicationOf(last_->snapshot);
}

std::optional<AtspiScreen::Sighting> AtspiScreen::look(const QDBusConnection& bus,
                                                       const Deadline& deadline) {
  auto applications = reader_.applications(bus, deadline);
  const auto activated = std::ranges::find(applications, activated_, &AtspiReference::application);
  if (activated != applications.end()) {
    if (auto sighting = lookAt(bus, {*activated}, deadline)) return sighting;
    applications.erase(activated);
  }
  if (auto sighting = lookAt(bus, applications, deadline)) return sighting;
  const bool isStillRight = last_ && last_->application == activated_ &&
                            reader_.isSilent(activated_) && !last_->patience.isOver();
  return isStillRight ? last_ : std::nullopt;
}

std::optional<AtspiScreen::Sighting> AtspiScreen::lookAt(
    const QDBusConnection& bus, const std::vector<AtspiReference>& applications,
    const Deadline& deadline) {
  const auto windows = reader_.windows(bus, applications, deadline);
  const auto active = std::ranges::find_if(windows, &AtspiReader::Window::isActive);
  if (active == windows.end()) return std::nullopt;
  std::vector<AtspiReference> readable{active->reference};
  for (const auto& window : windows) {
    const bool isAnother =
        &window != &*active && window.reference.application == active->reference.application;
    if (isAnother && readable.size() < maximumWindows) readable.push_back(window.reference);
  }
  return read(bus, std::move(readable), deadline);
}

std::optional<AtspiScreen::Sighting> AtspiScreen::read(const QDBusConnection& bus,
                                                       std::vector<AtspiReference> windows,
                                                       const Deadline& deadline) {
  const auto active = windows.front();
  windows.push_back({active.application, rootPath});
  auto names = reader_.names(bus, windows, deadline);
  if (reader_.isSilent(active.application)) return std::nullopt;

  Sighting sighting{active.application, active.path.path(), {}, Deadline(patienceWithSilence)};
  sighting.snapshot.name = textOf(names.back());
  if (sighting.snapshot.name == "") sighting.snapshot.name.reset();
  names.pop_back();
  sighting.snapshot.focusedTitle = textOf(names.front());
  for (const auto& name : names) {
    if (name) sighting.snapshot.titles.push_back(name->toStdString());
  }
  return sighting;
}

void AtspiScreen::rename(const QString& application, const QString& path, const QString& name) {
  if (!last_ || last_->application != application || last_->window != path) return;
  const auto title = name.toStdString();
  auto& titles = last_->snapshot.titles;
  if (last_->snapshot.focusedTitle && !titles.empty()) titles.front() = title;
  last_->snapshot.focusedTitle = title;
}

}  // namespace notewick
