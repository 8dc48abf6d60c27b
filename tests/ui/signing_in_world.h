#pragma once

#include <string>

#include "tests/support/world.h"

namespace notewick {

// How the menu begins.
inline const std::string SIGNED_IN = "(Signed in as ada@velk.example)";
inline const std::string SIGN_IN = "Sign in to VELK…";

/// Two participants, and perhaps a note from before.
class SigningInTest : public WorldTest {
 protected:
  SigningInTest() { knows({"Tobias Hargreave", "Lena O'Keefe"}); }

  void hasANoteWaiting() {
    files.put(supportFile("outbox.json"),
              R"([{"id":"N","participantId":"2","participantName":"Lena O'Keefe",
              "input":"Phoned","minutes":30,"sessionDate":"2024-05-01","attempts":0}])");
  }
  void closesThePanel() {
    signInPanel().close();
    loop.runPosted();
  }
  /// The service ends the session, which the next two calls find out.
  void sessionExpires() {
    service.backend.revokeTokens();
    for (int call = 0; call < 2; ++call) {
      statusItem().choose("Reload participants");
      loop.runPosted();
    }
  }
  [[nodiscard]] std::string menuBegins() const { return statusItem().lines().front(); }
};

}  // namespace notewick
