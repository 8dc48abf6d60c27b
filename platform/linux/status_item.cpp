#include "platform/linux/status_item.h"

#include <QCoreApplication>
#include <QPointer>
#include <iostream>

#include "platform/linux/panel_look.h"
#include "platform/linux/status_symbol.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// Hosts that draw the menu themselves do not all tell when it closes.
constexpr auto OPEN_AT_MOST = 10s;
/// Closing the menu and the click that closes it arrive in either order.
constexpr auto CLOSING_TIME = 250ms;

constexpr const char* NO_TRAY =
    "No tray on this desktop: the menu is the context menu of the quick-note panel "
    "(right click, Menu key or Shift+F10).";

}  // namespace

QtStatusItem::QtStatusItem(StatusItemAppearance appearance, std::weak_ptr<StatusItemTarget> target,
                           std::chrono::milliseconds patience)
    : appearance_(std::move(appearance)),
      target_(std::move(target)),
      host_([this] { hostChanged(); }) {
  held_.setSingleShot(true);
  connect(&held_, &QTimer::timeout, this, &QtStatusItem::drawTrayMenu);
  connect(&trayMenu_, &QMenu::aboutToShow, this, [this] {
    drawTrayMenu();
    holdMenuFor(OPEN_AT_MOST);
  });
  connect(&trayMenu_, &QMenu::aboutToHide, this, [this] { holdMenuFor(CLOSING_TIME); });
  QTimer::singleShot(patience, this, [this] {
    if (!inTray()) std::cerr << NO_TRAY << std::endl;
  });
  hostChanged();
}

void QtStatusItem::setTitle(const std::string& title) {
  if (title == appearance_.title) return;
  appearance_.title = title;
  updateAppearance();
}

void QtStatusItem::setMenu(const Menu& menu) {
  menu_ = menu;
  if (icon_ && !held_.isActive()) drawTrayMenu();
}

std::unique_ptr<QMenu> QtStatusItem::windowMenu() {
  if (inTray()) return nullptr;
  auto menu = std::make_unique<QMenu>();
  drawMenu(*menu, menu_, MenuReader::toolkit, choosing());
  return menu;
}

bool QtStatusItem::inTray() const {
  if (!icon_) return false;
  return reader_ == MenuReader::trayHost ? host_.takesNotifierItems() : host_.takesEmbeddedIcons();
}

void QtStatusItem::hostChanged() {
  if (icon_ || (!host_.takesNotifierItems() && !host_.takesEmbeddedIcons())) return;
  reader_ = host_.takesNotifierItems() ? MenuReader::trayHost : MenuReader::toolkit;
  appear();
}

void QtStatusItem::appear() {
  icon_ = std::make_unique<QSystemTrayIcon>();
  connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](auto reason) {
    const auto target = target_.lock();
    if (reason == QSystemTrayIcon::Trigger && target) target->statusItemClicked();
  });
  updateAppearance();
  drawTrayMenu();
  icon_->setContextMenu(&trayMenu_);
  icon_->show();
}

void QtStatusItem::updateAppearance() {
  if (!icon_) return;
  icon_->setIcon(statusSymbol(countIn(appearance_.title)));
  icon_->setToolTip(fromUtf8(appearance_.title).trimmed() + QStringLiteral(" — ") +
                    fromUtf8(appearance_.accessibilityDescription));
}

void QtStatusItem::drawTrayMenu() {
  if (trayMenu_.isVisible()) return holdMenuFor(OPEN_AT_MOST);
  if (menu_ == drawn_) return;
  drawn_ = menu_;
  drawMenu(trayMenu_, menu_, reader_, choosing());
}

void QtStatusItem::holdMenuFor(std::chrono::milliseconds time) {
  held_.start(time);
}

void QtStatusItem::choose(const MenuItem& item) {
  holdMenuFor(CLOSING_TIME);
  if (item.action == MenuAction::terminate) return QCoreApplication::quit();
  if (const auto target = target_.lock()) target->menuItemChosen(item);
}

MenuItemChosen QtStatusItem::choosing() {
  const QPointer<QtStatusItem> self(this);
  return [self](const MenuItem& item) {
    if (self) self->choose(item);
  };
}

}  // namespace notewick
