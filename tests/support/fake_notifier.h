#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/notifier.h"
#include "tests/support/deeds.h"

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
  explicit FakeNotifier(Deeds& deeds) : deeds_(deeds) {}

  void show(const std::string& title, const std::string& body) override {
    shown.push_back({title, body});
    deeds_.push_back("notify " + title);
  }

  std::vector<Notification> shown;

 private:
  Deeds& deeds_;
};

}  // namespace notewick
