#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "app/app_delegate.h"
#include "model/record_json.h"
#include "tests/support/world.h"

namespace notewick {

/// The running program, signed in and knowing two participants, and a user who sends notes.
class OutboxTest : public WorldTest {
 protected:
  OutboxTest() {
    loop.fireLate(0);
    runsKnowing({"Tobias Hargreave", "Lena O'Keefe"});
  }

  /// The user sends a note about Tobias Hargreave; nothing is answered yet.
  void sends(const std::string& what) {
    app().enqueueNote(app().participants.at(0), what, 30, "2024-05-01");
  }

  void flush() {
    app().flushOutbox();
    loop.runPosted();
  }

  /// Notes that could not be sent, their attempts saved; the next flush reaches the service.
  void hasWaiting(const std::vector<std::string>& notes) {
    service.isUnreachable("offline");
    for (const auto& note : notes) {
      sends(note);
      loop.runPosted();
    }
    advance(1);
    service.recovers();
    forgetThePast();
  }

  [[nodiscard]] std::vector<OutboxItem> stored() const {
    return decodeRecords<OutboxItem>(text("outbox.json")).value();
  }

  /// The notes in the outbox, by their text.
  [[nodiscard]] std::vector<std::string> waiting() const {
    std::vector<std::string> inputs;
    for (const auto& item : app().outbox) inputs.push_back(item.input);
    return inputs;
  }
};

}  // namespace notewick
