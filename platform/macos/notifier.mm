#include "platform/macos/notifier.h"

#include "detect/notification.h"

namespace notewick {

void ScriptNotifier::show(const std::string& title, const std::string& body,
                          std::function<void()> /*clicked*/) {
  launcher_.launch(notificationCommand(title, body));
}

}  // namespace notewick
