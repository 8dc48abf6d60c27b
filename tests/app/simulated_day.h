#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "detect/stamps.h"
#include "model/record_json.h"
#include "tests/support/world.h"

namespace notewick {

// Lines of the menu and of the watch log, and a notification.
inline const std::string WATCHING = "(Watching · 12 participants)";
inline const std::string FIX_TRUST = "⚠️ Can't see your screen yet — click to fix";
inline const std::string NOTHING_SPOTTED = "(No unlogged work spotted)";
inline const std::string AX_OFF =
    "ax=OFF (no screen access — grant Accessibility in System Settings)";
inline const Notification SEES_AGAIN =
    general("Screen access on — now watching for participant work.");

/// One day of a caseworker, told in chapters. Each chapter begins at its own time of the day, so
/// that it can be read, run and fail by itself. What she does is written in the world's own words;
/// what the program did is checked with the words below, and whatever a chapter leaves unchecked
/// fails it at its end: a notification, a request, a line of the watch log.
class SimulatedDay : public WorldTest {
 protected:
  SimulatedDay() {
    knows({"Tobias Hargreave", "Lena O'Keefe", "Zoe Abel", "Samuel Ito", "Maria de la Cruz",
           "René Dupont", "Aisha Khan", "Jonas Weber", "Grace Okafor", "Li Wei", "Noor Haddad",
           "Peter Novak"});
  }
  void TearDown() override {
    EXPECT_THAT(shown(), testing::IsEmpty());
    EXPECT_THAT(asked(), testing::IsEmpty());
    EXPECT_THAT(watchLogLines(), testing::ElementsAreArray(watchLog_));
  }

  /// The chapter begins at this time, in a program that is signed in and watching.
  void runsSince(int hour, int minute) {
    clock.setLocal({2024, 5, 2, hour, minute, 0});
    clock.jump(-15);
    signIn();
    launch();
    samples(1);
    forgetThePast();
  }

  // --- What is on screen -------------------------------------------------------------------------

  /// So many samples pass, each of which writes this line to the watch log.
  void samplesSee(int count, const std::string& line) {
    for (int sample = 0; sample < count; ++sample) {
      samples(1);
      expectLogged(line);
    }
  }
  /// So many samples pass with this name in a title.
  void reads(const std::string& name, int count) {
    screen.show("Mail", {name});
    samplesSee(count, "app=Mail titles=[\"" + name + "\"] matches=[\"" + name + "\"]");
  }
  /// So many samples pass with nothing on screen.
  void seesNothing(int count) {
    screen.clear();
    samples(count);
  }

  // --- What the user does ------------------------------------------------------------------------

  /// Writes a note in the widget and sends it; the answer, if there is one, arrives.
  void writesNote(const std::string& participant, const std::string& text, int minutes) {
    widget().chooseParticipant(participant);
    confirms(text, minutes);
  }
  /// The same for what the form is confirming already.
  void confirms(const std::string& text, int minutes) {
    widget().type(text);
    widget().pickMinutes(minutes);
    widget().pressSend();
    loop.runPosted();
  }
  /// Chooses an item of the menu; the answer, if there is one, arrives.
  void chooses(const std::string& item) {
    statusItem().choose(item);
    loop.runPosted();
  }

  // --- What the program did since the last look --------------------------------------------------

  /// The notifications.
  [[nodiscard]] std::vector<Notification> shown() { return std::exchange(notifier.shown, {}); }
  /// The requests, "POST auth/login" or "POST case-notes/capture: the note".
  [[nodiscard]] std::vector<std::string> asked() {
    constexpr std::string_view PREFIX = "/api/desktop/";
    std::vector<std::string> lines;
    for (const auto& request : std::exchange(service.requests, {})) {
      lines.push_back(request.method + " " + request.path.substr(PREFIX.size()));
      const auto body = request.json();
      if (body.contains("input")) lines.back() += ": " + body["input"].get<std::string>();
    }
    return lines;
  }
  /// A line is expected in the watch log now.
  void expectLogged(const std::string& line) { watchLog_.push_back(secondStamp() + " " + line); }

  // --- What is there now -------------------------------------------------------------------------

  [[nodiscard]] std::vector<std::string> menu() const { return statusItem().lines(); }
  [[nodiscard]] std::vector<Pending> storedPendings() const {
    return decodeRecords<Pending>(text("pending.json")).value();
  }
  [[nodiscard]] std::vector<OutboxItem> storedNotes() const {
    return decodeRecords<OutboxItem>(text("outbox.json")).value();
  }

 private:
  std::vector<std::string> watchLog_;
};

}  // namespace notewick
