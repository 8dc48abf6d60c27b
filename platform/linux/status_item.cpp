#include "platform/linux/status_item.h"

#include <QCoreApplication>
#include <QPointer>
#include <iostream>

#include "platform/linux/controls/panel_look.h"
#include "platform/linux/tray/menu_renderer.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// Hosts that draw the menu themselves do not all report when it closes.
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
  drawing_.setSingleShot(true);
  connect(&drawing_, &QTimer::timeout, this, &QtStatusItem::draw);
  held_.setSingleShot(true);
  connect(&held_, &QTimer::timeout, this, &QtStatusItem::drawTrayMenu);
  connect(&trayMenu_, &QMenu::aboutToShow, this, [this] {
    drawTrayMenu();
    holdMenuFor(OPEN_AT_MOST);
  });
  connect(&trayMenu_, &QMenu::aboutToHide, this, [this] { holdMenuFor(CLOSING_TIME); });
  QTimer::singleShot(patience, this, [this] {
    if (!isShown()) std::cerr << NO_TRAY << std::endl;
  });
  hostChanged();
}

void QtStatusItem::setTitle(const std::string& title, std::size_t count) {
  appearance_.title = title;
  count_ = count;
  drawSoon();
}

void QtStatusItem::setMenu(const Menu& menu) {
  menu_ = menu;
  drawSoon();
}

std::unique_ptr<QMenu> QtStatusItem::windowMenu() {
  if (isShown()) return nullptr;
  auto menu = std::make_unique<QMenu>();
  drawMenu(*menu, menu_, MenuReader::qt, choosing());
  return menu;
}

bool QtStatusItem::isShown() const {
  if (!icon_) return false;
  return reader_ == MenuReader::trayHost ? host_.takesNotifierItems() : host_.takesEmbeddedIcons();
}

void QtStatusItem::hostChanged() {
  if (!icon_ && (host_.takesNotifierItems() || host_.takesEmbeddedIcons())) appear();
}

void QtStatusItem::appear() {
  icon_ = std::make_unique<QSystemTrayIcon>();
  connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](auto reason) {
    const auto target = target_.lock();
    if (reason == QSystemTrayIcon::Trigger && target) target->statusItemClicked();
  });
  icon_->setContextMenu(&trayMenu_);
  // A host that starts may be known to Qt as a watcher of items before TrayHost hears of it.
  const bool exported = exportedTrayMenu() != nullptr || host_.takesNotifierItems();
  reader_ = exported ? MenuReader::trayHost : MenuReader::qt;
  draw();
  icon_->show();
}

void QtStatusItem::drawSoon() {
  if (icon_ && !drawing_.isActive()) drawing_.start();
}

void QtStatusItem::draw() {
  drawSymbol();
  drawToolTip();
  if (!held_.isActive()) drawTrayMenu();
}

void QtStatusItem::drawSymbol() {
  const QString badge = badgeOf(count_);
  if (badge == badge_) return;
  badge_ = badge;
  icon_->setIcon(symbols_.with(badge));
}

void QtStatusItem::drawToolTip() {
  const QString toolTip = fromUtf8(appearance_.title).trimmed() + QStringLiteral(" — ") +
                          fromUtf8(appearance_.accessibilityDescription);
  if (toolTip != icon_->toolTip()) icon_->setToolTip(toolTip);
}

void QtStatusItem::drawTrayMenu() {
  if (!icon_) return;
  if (trayMenu_.isVisible()) return holdMenuFor(OPEN_AT_MOST);
  drawMenu(trayMenu_, menu_, reader_, choosing(), exportedTrayMenu());
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
