#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/support/world.h"

namespace notewick {

// Lines of the menu and of the watch log.
inline const std::string WATCHING = "(Watching · 12 participants)";
inline const std::string FIX_TRUST = "⚠️ Can't see your screen yet — click to fix";
inline const std::string NOTHING_SPOTTED = "(No unlogged work spotted)";
inline const std::string AX_OFF =
    "ax=OFF (no screen access — grant Accessibility in System Settings)";

/// One day of a caseworker, told in chapters. Each chapter begins at its own time of the day, so
/// that it can be read, run and fail by itself. What she does is written in the world's own words;
/// what the program did is checked with the words below, and whatever a chapter leaves unchecked
/// fails it at its end: a notification, a request, a line of the watch log.
class SimulatedDay : public WorldTest {
 protected:
  SimulatedDay();

  /// The chapter begins at this time, in a program that is signed in and watching.
  void runsSince(int hour, int minute);
  void TearDown() override;

  // --- What is on screen -------------------------------------------------------------------------

  /// So many samples pass, each of which writes this line to the watch log.
  void samplesSee(int count, const std::string& line);
  /// So many samples pass with this name in a title.
  void reads(const std::string& participant, int count);
  /// So many samples pass with nothing on screen.
  void seesNothing(int count);

  // --- What the user does ------------------------------------------------------------------------

  /// Writes a note in the widget and sends it; the answer, if there is one, arrives.
  void writesNote(const std::string& participant, const std::string& text, int minutes);
  /// The same for what the form is confirming already.
  void confirms(const std::string& text, int minutes);
  /// Chooses an item of the menu; the answer, if there is one, arrives.
  void chooses(const std::string& item);

  // --- What the program did since the last look --------------------------------------------------

  /// The notifications.
  [[nodiscard]] std::vector<Notification> shown();
  /// The requests, "POST auth/login" or "POST case-notes/capture: the note".
  [[nodiscard]] std::vector<std::string> asked();
  /// A line is expected in the watch log now.
  void expectLogged(const std::string& line);

  // --- What is there now -------------------------------------------------------------------------

  [[nodiscard]] std::vector<std::string> menu() const { return statusItem().lines(); }
  [[nodiscard]] std::vector<Pending> storedPendings() const;
  [[nodiscard]] std::vector<OutboxItem> storedNotes() const;

 private:
  std::vector<std::string> watchLog_;
};

/// The notification of a note that arrived.
[[nodiscard]] Notification captured(const std::string& participant, int minutes);
/// The notification of caught work.
[[nodiscard]] Notification caught(const std::string& participant, int minutes);
/// A general notification.
[[nodiscard]] Notification general(const std::string& body);

inline const Notification SEES_AGAIN =
    general("Screen access on — now watching for participant work.");

}  // namespace notewick
