#include "platform/linux/tray/tray_host.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include "platform/linux/x11/x11_display.h"
#include "platform/linux/x11/xcb_owned.h"

namespace notewick {
namespace {

const QString WATCHER = QStringLiteral("org.kde.StatusNotifierWatcher");

}  // namespace

TrayHost::TrayHost(std::function<void()> changed) : changed_(std::move(changed)) {
  watchBus();
  watchDisplay();
}

TrayHost::~TrayHost() {
  qApp->removeNativeEventFilter(this);
}

bool TrayHost::takesEmbeddedIcons() const {
  if (display_ == nullptr) return false;
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      display_, xcb_get_selection_owner(display_, selection_), nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

bool TrayHost::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
  const auto* const selected = static_cast<const xcb_client_message_event_t*>(message);
  if (selected->type == manager_ && selected->data.data32[1] == selection_) changed_();
  return false;
}

void TrayHost::watchBus() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  watcher_.setConnection(bus);
  watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
  watcher_.addWatchedService(WATCHER);
  connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] {
    hasWatcher_ = true;
    changed_();
  });
  connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this] { hasWatcher_ = false; });
  hasWatcher_ = bus.interface()->isServiceRegistered(WATCHER);
}

void TrayHost::watchDisplay() {
  display_ = x11Display();
  if (display_ == nullptr) return;
  selection_ = x11Atom(*display_, "_NET_SYSTEM_TRAY_S0");
  manager_ = x11Atom(*display_, "MANAGER");
  qApp->installNativeEventFilter(this);
}

}  // namespace notewick
