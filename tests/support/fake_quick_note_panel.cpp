#include "tests/support/fake_quick_note_panel.h"

#include <algorithm>

#include "tests/support/fake_views.h"

namespace notewick {

FakeQuickNotePanel::FakeQuickNotePanel(FakeViews& views, QuickNoteTexts fixedTexts,
                                       std::weak_ptr<QuickNotePanelDelegate> owner)
    : FakePanel(std::move(owner)), texts(std::move(fixedTexts)), views_(views) {}

FakeQuickNotePanel::~FakeQuickNotePanel() {
  views_.forget(this);
}

void FakeQuickNotePanel::setParticipants(const std::vector<std::string>& titles,
                                         std::optional<std::size_t> selected) {
  EXPECT_EQ(selected.has_value(), !titles.empty());
  EXPECT_TRUE(!selected || *selected < titles.size());
  participants = titles;
  selection = selected;
}

std::optional<std::string> FakeQuickNotePanel::selectedParticipant() const {
  return selection ? std::optional(participants.at(*selection)) : std::nullopt;
}

void FakeQuickNotePanel::setCaught(const std::vector<CaughtRow>& newRows,
                                   const std::optional<std::string>& newMore) {
  rows = newRows;
  more = newMore;
  views_.trace.push_back("widget");
}

bool FakeQuickNotePanel::applySavedFrame() {
  if (views_.frameSaved) place = Place::saved;
  return views_.frameSaved;
}

void FakeQuickNotePanel::placeAtBottomRight(double fromEdges) {
  place = Place::bottomRight;
  inset = fromEdges;
}

void FakeQuickNotePanel::type(const std::string& text) {
  note = text;
  callDelegate([](auto& delegate) { delegate.textDidChange(); });
}

void FakeQuickNotePanel::chooseParticipant(const std::string& title) {
  const auto item = std::ranges::find(participants, title);
  if (item == participants.end())
    ADD_FAILURE() << "the chooser has no \"" << title << "\"";
  else
    selection = std::size_t(item - participants.begin());
}

void FakeQuickNotePanel::pickMinutes(int minutesOnSegment) {
  const auto segment = std::ranges::find(texts.minutes, std::to_string(minutesOnSegment));
  if (segment == texts.minutes.end())
    ADD_FAILURE() << "there is no segment for " << minutesOnSegment << " minutes";
  else
    minutes = std::size_t(segment - texts.minutes.begin());
}

void FakeQuickNotePanel::pressSend() {
  callDelegate([](auto& delegate) { delegate.send(); });
}

void FakeQuickNotePanel::clickLog(std::size_t row) {
  callDelegate([row](auto& delegate) { delegate.caughtLog(row); });
}

void FakeQuickNotePanel::clickSkip(std::size_t row) {
  callDelegate([row](auto& delegate) { delegate.caughtSkip(row); });
}

void FakeQuickNotePanel::close() {
  closeByUser();
}

std::vector<std::string> FakeQuickNotePanel::rowTexts() const {
  std::vector<std::string> all;
  for (const auto& row : rows) all.push_back(row.text);
  return all;
}

}  // namespace notewick
