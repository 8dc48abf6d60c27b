#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/notifier.h"
#include "tests/support/trace.h"

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
  explicit FakeNotifier(Trace& trace) : trace_(trace) {}

  void show(const std::string& title, const std::string& body) override {
    shown.push_back({title, body});
    trace_.push_back("notify " + title);
  }

  std::vector<Notification> shown;

 private:
  Trace& trace_;
};

}  // namespace notewick
