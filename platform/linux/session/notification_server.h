#pragma once

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace notewick {

/// A notification as it is to be shown. `clicked` may be empty.
struct NotificationRequest {
  QString summary;  ///< plain text
  QString body;     ///< markup
  std::function<void()> clicked;
};

/// The notification service (freedesktop.org, Desktop Notifications 1.2) on the session
/// bus, which must be used from one thread. No call waits for the server.
///
/// A click anywhere on a notification is its action "default". Servers that know no actions are
/// sent none: some of them would show such a notification as a dialogue. So the first notification
/// waits until the server has said what it can do, at most two seconds. A server that starts anew
/// counts its notifications from the beginning: what the one before it showed leads nowhere then.
class NotificationServer : public QObject {
  Q_OBJECT

 public:
  NotificationServer();

  /// Every notification has normal urgency, so that the user's do-not-disturb holds it back, and
  /// comes with the sound of a new message where the server plays sounds. Failures are swallowed.
  void show(NotificationRequest request);

 private slots:
  void onActionInvoked(uint id, const QString& action);

 private:
  void listen();
  void serverChanged(const QString& newOwner);
  void askForCapabilities();
  void capabilitiesArrived();
  void send(const NotificationRequest& request);
  void remember(uint id, const std::function<void()>& clicked);

  QDBusServiceWatcher watcher_;
  std::unique_ptr<QDBusPendingCallWatcher> question_;  ///< for the capabilities
  std::optional<bool> takesActions_;
  std::vector<NotificationRequest> waiting_;       ///< for the answer
  std::map<uint, std::function<void()>> clicked_;  ///< by the ids of this server
};

}  // namespace notewick
