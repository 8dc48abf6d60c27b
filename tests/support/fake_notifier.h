#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/notifier.h"

namespace notewick {

struct Notification {
  std::string title;
  std::string body;

  bool operator==(const Notification&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const Notification& notification) {
    return out << notification.title << " / " << notification.body;
  }
};

/// Keeps what was shown, in order.
class FakeNotifier : public Notifier {
 public:
  void show(const std::string& title, const std::string& body) override {
    shown.push_back({title, body});
  }

  std::vector<Notification> shown;
};

}  // namespace notewick
