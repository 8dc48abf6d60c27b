#pragma once

#include <string>
#include <vector>

#include "tests/support/world.h"

namespace notewick {

// Lines of the menu.
inline const std::string WATCHING = "(Watching · 12 participants)";
inline const std::string NOTHING_SPOTTED = "(No unlogged work spotted)";

/// The language in which one day of a caseworker is told: what she does is written with the world's
/// own words, what the program did is checked with the words below. Each check takes in everything
/// that happened since the last one of its kind, so that nothing goes unnoticed.
class SimulatedDay : public WorldTest {
 protected:
  SimulatedDay();

  // --- Time passes -------------------------------------------------------------------------------

  /// So many samples pass, each of which writes this line to the watch log.
  void samplesSee(int count, const std::string& line);
  /// So many samples pass that write nothing.
  void samplesSeeNothing(int count) { samples(count); }
  /// Nothing on screen names anybody until this time of the day.
  void nothingHappensUntil(int hour, int minute, int second = 0);
  /// Whatever was due by now has come, however late timers fire.
  void lateSamplesCome();
  /// The participant was on screen between these moments, to the lateness of the first sample.
  void expectSeen(const Pending& pending, const CivilTime& first, const CivilTime& last) const;

  // --- What the user does ------------------------------------------------------------------------

  /// Writes a note in the widget and sends it; the answer, if there is one, arrives.
  void writesNote(const std::string& participant, const std::string& text, int minutes);
  /// The same for what the form is confirming already.
  void confirms(const std::string& text, int minutes);

  // --- What happened since the last check --------------------------------------------------------

  /// These notifications, in this order, and no others.
  void wasTold(const std::vector<Notification>& expected);
  /// These requests, in this order, and no others: "POST auth/login", "GET participants as
  /// access-1", "POST case-notes/capture as access-1: the note".
  void wasAsked(const std::vector<std::string>& expected);
  /// The watch log holds, byte for byte, what was expected of it from the day's beginning.
  void expectWatchLog() const;
  /// A line is expected in the watch log now.
  void expectLogged(const std::string& line);

  // --- What is there now -------------------------------------------------------------------------

  /// The menu, item by item from top to bottom: "-" a separator, "(text)" a disabled item.
  void expectMenu(const std::vector<std::string>& expected) const;
  /// The menu of a signed-in user with these two variable parts.
  [[nodiscard]] std::vector<std::string> signedInMenu(const std::string& watching,
                                                      const std::vector<std::string>& middle) const;

  [[nodiscard]] std::vector<Pending> storedPendings() const;
  [[nodiscard]] std::vector<OutboxItem> storedNotes() const;

  // --- The chapters, in the order of the day -----------------------------------------------------

  void signsInForTheFirstTime();
  void readsMailAndDocuments();
  void confirmsWhatWasCaught();
  void pausesTheWatching();
  void losesTheTrust();
  void worksThroughAnOutage();
  void restartsInTheMiddle();
  void isSignedOutByTheService();
  void worksUntilAfterMidnight();
  void leavesEverythingInOrder();

 private:
  [[nodiscard]] std::string timeOfDay() const;

  std::string watchLog_;
};

/// The notification of a note that arrived.
[[nodiscard]] Notification captured(const std::string& participant, int minutes);
/// The notification of caught work.
[[nodiscard]] Notification caught(const std::string& participant, int minutes);
/// A general notification.
[[nodiscard]] Notification general(const std::string& body);

}  // namespace notewick
