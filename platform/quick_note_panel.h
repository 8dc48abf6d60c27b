#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/floating_panel.h"

namespace notewick {

/// The fixed texts of the quick-note panel; those called labels are read by screen readers only.
struct QuickNoteTexts {
  std::string title;
  std::string participantLabel;
  std::string noteLabel;
  std::string placeholder;
  std::string minutesLabel;
  std::vector<std::string> minutes;  ///< one segment each
  std::string send;
  std::string caughtHeader;
  std::string log;
  std::string skip;
};

/// A caught item as a row shows it, with what its two buttons are called by a screen reader.
struct CaughtRow {
  std::string text;
  std::string logLabel;
  std::string skipLabel;

  friend bool operator==(const CaughtRow&, const CaughtRow&) = default;
};

/// Receives what the user did in the panel. Main thread.
class QuickNotePanelDelegate {
 public:
  virtual ~QuickNotePanelDelegate() = default;

  virtual void send() = 0;
  /// The button of the row with this index was pressed, counted from 0.
  virtual void caughtLog(std::size_t tag) = 0;
  virtual void caughtSkip(std::size_t tag) = 0;
  virtual void textDidChange() = 0;
  /// The user closes the panel. Not called for `orderOut`, for quitting, or for the session's end.
  virtual void windowWillClose() = 0;
};

/// The quick-note panel: a passive form. It shows what its setters say and reports what the
/// user did to its delegate; it decides nothing. Main thread. Setters called by the program never
/// call the delegate.
class QuickNotePanel : public FloatingPanel {
 public:
  /// Replaces the participant chooser's items; `selected` is an index into them, absent only when
  /// there are none.
  virtual void setParticipants(const std::vector<std::string>& titles,
                               std::optional<std::size_t> selected) = 0;
  [[nodiscard]] virtual std::optional<std::string> selectedParticipant() const = 0;

  /// The text of the note as it stands, UTF-8.
  [[nodiscard]] virtual std::string noteText() const = 0;
  virtual void setNoteText(const std::string& text) = 0;
  /// Moves the keyboard focus into the note.
  virtual void focusNote() = 0;
  virtual void setPlaceholderHidden(bool hidden) = 0;

  /// The index of the chosen minutes segment.
  [[nodiscard]] virtual std::optional<std::size_t> selectedMinutes() const = 0;
  virtual void deselectMinutes() = 0;

  virtual void setHint(const std::string& text) = 0;
  virtual void setStatus(const std::string& text) = 0;

  /// Replaces the rows of caught work; `more`, where given, is a line below them. The header shows
  /// only when there are rows.
  virtual void setCaught(const std::vector<CaughtRow>& rows,
                         const std::optional<std::string>& more) = 0;

  /// Gives the panel the size its contents ask for; it grows and shrinks with its rows.
  virtual void fitToContents() = 0;

  /// Puts the panel where the user left it last time; false when no place was saved. A place that
  /// is off the screens is pulled back onto them.
  virtual bool applySavedFrame() = 0;
  /// Puts the panel into the bottom right corner of the main screen's visible frame, `inset` points
  /// from both edges; nothing when there is no screen.
  virtual void placeAtBottomRight(double inset) = 0;
};

}  // namespace notewick
