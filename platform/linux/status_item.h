#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/linux/tray/menu_renderer.h"
#include "platform/linux/tray/status_symbol.h"
#include "platform/linux/tray/tray_host.h"
#include "platform/status_item.h"

namespace notewick {

/// The tray item. It appears as soon as the desktop has a host for it. A desktop's panel may start
/// after this program, so only when none has come within `patience` one line on standard error says
/// so. The title shows as the tool tip, and its count as a badge on the symbol.
///
/// Two kinds of hosts exist. A StatusNotifierItem host reads the menu over the bus
/// (com.canonical.dbusmenu) and draws it itself; a host of embedded icons shows our own QMenu. Qt
/// decides for one of them when the icon is made and stays with it. So the icon is made only when a
/// host is there, and `reader_` keeps which kind it is: they read access keys differently.
///
/// What differs from what is shown is drawn once at the end of a turn of the main loop, however
/// often it was set in it: a host of trays asks for everything anew at each change. A menu that is
/// set while the old one is open is drawn when that has closed, or is opened again.
class QtStatusItem final : public QObject, public StatusItem {
 public:
  QtStatusItem(StatusItemAppearance appearance, std::weak_ptr<StatusItemTarget> target,
               std::chrono::milliseconds patience = std::chrono::seconds(10));

  void setTitle(const std::string& title, std::size_t count) override;
  void setMenu(const Menu& menu) override;
  [[nodiscard]] bool isShown() const override;

  /// The menu for a window to offer while the desktop shows no tray; else null.
  [[nodiscard]] std::unique_ptr<QMenu> windowMenu();

 private:
  void hostChanged();
  void appear();
  void drawSoon();
  void draw();
  void drawSymbol();
  void drawToolTip();
  void drawTrayMenu();
  /// Leaves the drawn menu alone for that long: a line that moves under the pointer would make the
  /// user choose another one.
  void holdMenuFor(std::chrono::milliseconds time);
  void choose(const MenuItem& item);
  [[nodiscard]] MenuItemChosen choosing();

  StatusItemAppearance appearance_;
  std::size_t count_ = 0;
  std::weak_ptr<StatusItemTarget> target_;
  Menu menu_;
  QMenu trayMenu_;
  StatusSymbols symbols_;
  QTimer drawing_;  ///< runs out at the end of the turn
  QTimer held_;     ///< runs while the tray's menu may be open
  TrayHost host_;
  MenuReader reader_ = MenuReader::qt;
  std::unique_ptr<QSystemTrayIcon> icon_;
  std::optional<QString> badge_;  ///< the one on the icon
};

}  // namespace notewick
