#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/records.h"
#include "platform/main_loop.h"
#include "platform/quick_note_panel.h"

namespace notewick {

/// What the widget asks of its owner. Main thread.
class QuickWidgetOwner {
 public:
  virtual ~QuickWidgetOwner() = default;

  virtual void enqueueNote(const Participant& participant, const std::string& what,
                           std::int64_t minutes, const std::string& sessionDate) = 0;
  virtual void removePending(const std::string& id) = 0;
  /// The user has closed the panel.
  virtual void widgetClosed() = 0;
};

/// Lets the user turn detected work into a case note: a one-line form above a short list of caught
/// work. The controller owns its panel. Main thread.
class QuickWidgetController : public QuickNotePanelDelegate,
                              public std::enable_shared_from_this<QuickWidgetController> {
 public:
  [[nodiscard]] static std::shared_ptr<QuickWidgetController> create(
      std::weak_ptr<QuickWidgetOwner> owner);

  /// Shows the lists as they are now; keeps what the user has typed and chosen.
  void refresh(const std::vector<Participant>& participants, const std::vector<Pending>& pendings,
               std::size_t outboxCount);

  /// Puts the panel on screen. It takes the keyboard only if there is a pending item to confirm.
  void present(const std::optional<Pending>& pending);

  /// Puts the panel on screen with the keyboard, ready to type.
  void makeKeyAndOrderFront() { panel_->makeKeyAndOrderFront(); }

  void orderOut() { panel_->orderOut(); }

  /// Shows a short text for some seconds where the state of the queue stands.
  void flashStatus(const std::string& text);

  void send() override;
  void caughtLog(std::size_t tag) override;
  void caughtSkip(std::size_t tag) override;
  void textDidChange() override;
  void windowWillClose() override;

 private:
  explicit QuickWidgetController(std::weak_ptr<QuickWidgetOwner> owner);

  void fill(const Pending& pending);
  void showParticipants();
  void showCaught();
  void showStatus(std::size_t outboxCount);
  void showPlaceholder();
  void resetForm();
  void refuse(const std::string& reason);
  [[nodiscard]] const Participant* chosenParticipant() const;
  [[nodiscard]] std::optional<std::string> chosenName() const;
  [[nodiscard]] const Pending* confirmedPending() const;

  std::unique_ptr<QuickNotePanel> panel_;
  std::weak_ptr<QuickWidgetOwner> owner_;
  std::vector<Participant> participants_;  ///< sorted by name, as the chooser lists them
  std::vector<std::string> names_;         ///< what the chooser lists: each name once
  std::vector<std::string> titles_;        ///< the same names as the chooser draws them
  std::vector<Pending> displayedPendings_;
  std::optional<std::string> confirmingPendingId_;
  std::unique_ptr<Timer> statusResetTimer_;
};

/// The participants in the chooser's order: by name, code point by code point of the composed text,
/// equal names in the order given.
[[nodiscard]] std::vector<Participant> sortedByName(std::vector<Participant> participants);

}  // namespace notewick
