#include "ui/quick_widget_controller.h"

#include <algorithm>
#include <array>
#include <map>
#include <ranges>
#include <set>

#include "detect/stamps.h"
#include "model/drawn_text.h"
#include "model/unicode.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr std::array<std::int64_t, 6> MINUTES = {15, 30, 45, 60, 90, 120};
constexpr std::size_t MOST_ROWS = 4;
constexpr double CORNER_INSET = 24.0;
constexpr double STATUS_SECONDS = 4.0;
constexpr const char* IDLE_HINT = "Minutes — you set this.";

QuickNoteTexts quickNoteTexts() {
  std::vector<std::string> minutes;
  for (const auto choice : MINUTES) minutes.push_back(std::to_string(choice));
  return {
      .title = "VELK — quick note",
      .participantLabel = "Participant",
      .noteLabel = "What did you do?",
      .placeholder = "What did you do? One line is enough.",
      .minutesLabel = "Minutes",
      .minutes = minutes,
      .send = "Send to VELK",
      .caughtHeader = "Caught — confirm or skip",
      .log = "Log",
      .skip = "✕",
  };
}

CaughtRow rowFor(const Pending& pending) {
  const std::string text = drawnWithin(pending.participant) + " · ~" +
                           std::to_string(pending.observedMinutes) + "m · " +
                           drawnWithin(pending.day);
  return {.text = text, .logLabel = "Log " + text, .skipLabel = "Skip " + text};
}

/// A name that comes again stands where it came last.
std::vector<std::string> distinctNames(const std::vector<Participant>& participants) {
  std::vector<std::string> names;
  std::set<std::string> seen;
  for (const Participant& participant : std::views::reverse(participants)) {
    if (seen.insert(participant.name()).second) names.push_back(participant.name());
  }
  std::ranges::reverse(names);
  return names;
}

/// The names as they are drawn. Names that look alike are told apart by a number, so that no note
/// goes to the namesake.
std::vector<std::string> titlesOf(const std::vector<std::string>& names) {
  std::vector<std::string> titles;
  std::map<std::string, int> numbers;
  std::set<std::string> taken;
  for (const std::string& name : names) {
    const std::string drawn = drawnText(name);
    int& number = numbers[appearanceOf(drawn)];
    std::string title;
    do {
      ++number;
      title = number == 1 ? drawn : drawn + " (" + std::to_string(number) + ")";
    } while (!taken.insert(appearanceOf(title)).second);
    titles.push_back(title);
  }
  return titles;
}

std::optional<std::size_t> placeOf(const std::string& text, const std::vector<std::string>& texts) {
  const auto found = std::find(texts.begin(), texts.end(), text);
  if (found == texts.end()) return std::nullopt;
  return static_cast<std::size_t>(found - texts.begin());
}

}  // namespace

std::vector<Participant> sortedByName(std::vector<Participant> participants) {
  std::vector<std::pair<std::string, Participant>> keyed;
  for (Participant& participant : participants) {
    keyed.emplace_back(composed(participant.name()), std::move(participant));
  }
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<Participant> sorted;
  for (auto& [key, participant] : keyed) sorted.push_back(std::move(participant));
  return sorted;
}

std::shared_ptr<QuickWidgetController> QuickWidgetController::create(
    std::weak_ptr<QuickWidgetOwner> owner) {
  const std::shared_ptr<QuickWidgetController> controller(
      new QuickWidgetController(std::move(owner)));
  controller->panel_ = ports().views.makeQuickNotePanel(quickNoteTexts(), controller);
  controller->panel_->setHint(IDLE_HINT);
  return controller;
}

QuickWidgetController::QuickWidgetController(std::weak_ptr<QuickWidgetOwner> owner)
    : owner_(std::move(owner)) {}

void QuickWidgetController::refresh(const std::vector<Participant>& participants,
                                    const std::vector<Pending>& pendings, std::size_t outboxCount) {
  participants_ = sortedByName(participants);
  showParticipants();
  displayedPendings_ = pendings;
  if (!confirmedPending()) confirmingPendingId_.reset();
  showCaught();
  showStatus(outboxCount);
  showPlaceholder();
  panel_->fitToContents();
}

void QuickWidgetController::showParticipants() {
  const auto remembered = chosenName();
  names_ = distinctNames(participants_);
  titles_ = titlesOf(names_);
  auto selected = remembered ? placeOf(*remembered, names_) : std::nullopt;
  if (!selected && !titles_.empty()) selected = 0;
  panel_->setParticipants(titles_, selected);
}

void QuickWidgetController::showCaught() {
  std::vector<CaughtRow> rows;
  for (const Pending& pending : displayedPendings_) {
    if (rows.size() < MOST_ROWS) rows.push_back(rowFor(pending));
  }
  std::optional<std::string> more;
  if (displayedPendings_.size() > MOST_ROWS) {
    more = "+ " + std::to_string(displayedPendings_.size() - MOST_ROWS) + " more in the menu bar";
  }
  panel_->setCaught(rows, more);
}

void QuickWidgetController::showStatus(std::size_t outboxCount) {
  if (outboxCount > 0) {
    panel_->setStatus(std::to_string(outboxCount) + " queued — will retry");
  } else if (!statusResetTimer_) {
    panel_->setStatus("");
  }
}

void QuickWidgetController::showPlaceholder() {
  panel_->setPlaceholderHidden(!panel_->noteText().empty());
}

void QuickWidgetController::present(const std::optional<Pending>& pending) {
  if (pending) fill(*pending);
  if (!panel_->applySavedFrame()) panel_->placeAtBottomRight(CORNER_INSET);
  panel_->orderFrontRegardless();
}

void QuickWidgetController::fill(const Pending& pending) {
  if (const auto place = placeOf(pending.participant, names_)) {
    panel_->setParticipants(titles_, place);
  }
  confirmingPendingId_ = pending.id;
  panel_->setHint("On screen ≈ " + std::to_string(pending.observedMinutes) +
                  " min — you set the duration.");
  panel_->makeKeyAndOrderFront();
  panel_->focusNote();
}

void QuickWidgetController::send() {
  const auto segment = panel_->selectedMinutes();
  if (!segment || *segment >= MINUTES.size()) return refuse("Pick a duration");
  const std::string what = trimmedOfBlanksAndLineBreaks(panel_->noteText());
  if (what.empty()) {
    refuse("Say what you did");
    return panel_->focusNote();
  }
  const Participant* participant = chosenParticipant();
  if (participant == nullptr) return ports().workspace.beep();
  const Pending* confirmed = confirmedPending();
  const std::string sessionDate = confirmed != nullptr ? confirmed->day : dayStamp();
  const Participant chosen = *participant;
  const auto confirmedId = confirmingPendingId_;
  if (const auto owner = owner_.lock()) {
    owner->enqueueNote(chosen, what, MINUTES[*segment], sessionDate);
    if (confirmedId) owner->removePending(*confirmedId);
  }
  resetForm();
  flashStatus("Sent — finish it on VELK");
}

void QuickWidgetController::refuse(const std::string& reason) {
  ports().workspace.beep();
  flashStatus(reason);
}

const Participant* QuickWidgetController::chosenParticipant() const {
  const auto name = chosenName();
  if (!name) return nullptr;
  const auto found = std::ranges::find(participants_, *name, &Participant::name);
  return found == participants_.end() ? nullptr : &*found;
}

std::optional<std::string> QuickWidgetController::chosenName() const {
  const auto title = panel_->selectedParticipant();
  const auto place = title ? placeOf(*title, titles_) : std::nullopt;
  return place ? std::optional(names_[*place]) : std::nullopt;
}

const Pending* QuickWidgetController::confirmedPending() const {
  const auto found =
      std::find_if(displayedPendings_.begin(), displayedPendings_.end(),
                   [&](const Pending& pending) { return confirmingPendingId_ == pending.id; });
  return found == displayedPendings_.end() ? nullptr : &*found;
}

void QuickWidgetController::resetForm() {
  panel_->setNoteText("");
  panel_->setPlaceholderHidden(false);
  panel_->deselectMinutes();
  confirmingPendingId_.reset();
  panel_->setHint(IDLE_HINT);
}

void QuickWidgetController::caughtLog(std::size_t tag) {
  if (tag < displayedPendings_.size()) fill(Pending(displayedPendings_[tag]));
}

void QuickWidgetController::caughtSkip(std::size_t tag) {
  const auto owner = owner_.lock();
  if (tag < displayedPendings_.size() && owner) {
    owner->removePending(std::string(displayedPendings_[tag].id));
  }
}

void QuickWidgetController::flashStatus(const std::string& text) {
  panel_->setStatus(text);
  statusResetTimer_ = ports().mainLoop.startOneShot(STATUS_SECONDS, [weakSelf = weak_from_this()] {
    const auto self = weakSelf.lock();
    if (!self) return;
    self->statusResetTimer_.reset();
    self->panel_->setStatus("");
  });
}

void QuickWidgetController::textDidChange() {
  showPlaceholder();
}

void QuickWidgetController::windowWillClose() {
  if (const auto owner = owner_.lock()) owner->widgetClosed();
}

}  // namespace notewick
