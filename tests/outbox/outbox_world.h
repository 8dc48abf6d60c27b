#pragma once

#include <cstdint>
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
    signIn();
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    launch();
    forgetThePast();
  }

  /// The user sends a note about Tobias Hargreave; nothing is answered yet.
  void sends(const std::string& what, std::int64_t minutes = 30) {
    app().enqueueNote(app().participants.at(0), what, minutes, "2024-05-01");
  }

  /// The same, and the answer is there.
  void sendsAndWaits(const std::string& what) {
    sends(what);
    loop.runPosted();
  }

  void flush() {
    app().flushOutbox();
    loop.runPosted();
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
