#include "platform/linux/notifier.h"

#include <utility>

namespace notewick {
namespace {

QString escaped(const std::string& body) {
  QString text = QString::fromStdString(body);
  text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
  return text;
}

}  // namespace

void DBusNotifier::show(const std::string& title, const std::string& body,
                        std::function<void()> clicked) {
  if (!server_) server_ = std::make_unique<NotificationServer>();
  server_->show({QString::fromStdString(title), escaped(body), std::move(clicked)});
}

}  // namespace notewick
