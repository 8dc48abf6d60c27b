#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
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

/// Keeps what was shown, in order, on the screen for ever.
class FakeNotifier : public Notifier {
 public:
  explicit FakeNotifier(Trace& trace) : trace_(trace) {}

  void show(const std::string& title, const std::string& body,
            std::function<void()> clicked) override {
    shown.push_back({title, body});
    clicked_.emplace_back(title, std::move(clicked));
    trace_.push_back("notify " + title);
  }

  /// The user clicks the latest with this title.
  void click(const std::string& title) {
    const auto found = std::find_if(clicked_.rbegin(), clicked_.rend(),
                                    [&](const auto& each) { return each.first == title; });
    if (found == clicked_.rend()) {
      ADD_FAILURE() << "there is no notification \"" << title << "\" to click";
      return;
    }
    found->second();
  }

  std::vector<Notification> shown;

 private:
  std::vector<std::pair<std::string, std::function<void()>>> clicked_;
  Trace& trace_;
};

}  // namespace notewick
