#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QDBusServiceWatcher>
#include <QObject>
#include <functional>

namespace notewick {

/// Whether this desktop can show a tray item, now and from now on: by a StatusNotifierWatcher on
/// the session bus, or by the owner of the system tray selection of the X screen (freedesktop
/// System Tray Protocol). Qt itself decides only once, when its first tray icon is made,
/// which of the two it uses; so no tray icon must be made before a host is there.
class TrayHost : public QObject, public QAbstractNativeEventFilter {
 public:
  /// `changed` is called after a host came; that one has gone is seen by asking.
  explicit TrayHost(std::function<void()> changed);
  ~TrayHost() override;

  [[nodiscard]] bool takesNotifierItems() const { return hasWatcher_; }
  [[nodiscard]] bool takesEmbeddedIcons() const;

 protected:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  void watchBus();
  void watchDisplay();

  std::function<void()> changed_;
  QDBusServiceWatcher watcher_;
  bool hasWatcher_ = false;
  xcb_connection_t* display_ = nullptr;
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
};

}  // namespace notewick
