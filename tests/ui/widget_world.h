#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/world.h"
#include "ui/quick_widget_controller.h"

namespace notewick {

inline const std::string IDLE_HINT = "Minutes — you set this.";

inline Pending pendingOf(const std::string& id, const std::string& participant,
                         const std::string& day = "2024-05-02") {
  return {id, participant, day, Date(0), Date(60), 12, {}};
}

/// Writes down what the widget asks for; may refresh the widget in between, as the program does.
class NoteTaker : public QuickWidgetOwner {
 public:
  void enqueueNote(const Participant& participant, const std::string& what, std::int64_t minutes,
                   const std::string& sessionDate) override {
    calls.push_back("note for " + participant.id + ": " + what + ", " + std::to_string(minutes) +
                    " min, " + sessionDate);
    if (afterEnqueue) afterEnqueue();
  }
  void removePending(const std::string& id) override { calls.push_back("remove " + id); }
  void widgetClosed() override { calls.emplace_back("closed"); }

  std::vector<std::string> calls;
  std::function<void()> afterEnqueue;
};

class WidgetTest : public WorldTest {
 protected:
  WidgetTest() { catches({}); }

  /// The program's lists are these now.
  void shows(const std::vector<std::string>& names, const std::vector<Pending>& pendings = {},
             std::size_t queued = 0) {
    controller->refresh(participantsNamed(names), pendings, queued);
  }
  void catches(const std::vector<Pending>& pendings) {
    shows({"Tobias Hargreave", "Lena O'Keefe"}, pendings);
  }
  void queues(std::size_t count) { shows({"Tobias Hargreave", "Lena O'Keefe"}, {}, count); }

  /// The user fills in the form and sends it.
  void sends(const std::string& text, int minutes = 30) {
    widget().type(text);
    widget().pickMinutes(minutes);
    widget().pressSend();
  }

  std::shared_ptr<NoteTaker> owner = std::make_shared<NoteTaker>();
  std::shared_ptr<QuickWidgetController> controller = QuickWidgetController::create(owner);
};

}  // namespace notewick
