#pragma once

#include <memory>

#include "platform/linux/session/notification_server.h"
#include "platform/notifier.h"

namespace notewick {

/// Notifications by the desktop's notification service. In the body it would render markup, some
/// servers without saying that they do, so `&`, `<` and `>` are escaped there; the summary is
/// always plain text. Nothing is asked for before the first notification.
class DBusNotifier : public Notifier {
 public:
  void show(const std::string& title, const std::string& body,
            std::function<void()> clicked) override;

 private:
  std::unique_ptr<NotificationServer> server_;
};

}  // namespace notewick
