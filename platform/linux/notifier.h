#pragma once

#include "platform/notifier.h"

namespace notewick {

/// The freedesktop notification service (Desktop Notifications Specification 1.2), asked over the
/// session bus without waiting for its answer. In the body it would render markup, some servers
/// without saying that they do, so `&`, `<` and `>` are escaped there; the summary is always plain
/// text. A notification comes with the sound of a new message where the server plays sounds.
class DBusNotifier : public Notifier {
 public:
  void show(const std::string& title, const std::string& body) override;
};

}  // namespace notewick
