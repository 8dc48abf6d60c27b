#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/quick_note_panel.h"
#include "tests/support/fake_panel.h"

namespace notewick {

class FakeViews;

/// The quick-note panel as the user sees it and works it.
class FakeQuickNotePanel : public FakePanel<QuickNotePanel, QuickNotePanelDelegate> {
 public:
  enum class Place { untouched, saved, bottomRight };

  FakeQuickNotePanel(FakeViews& views, QuickNoteTexts fixedTexts,
                     std::weak_ptr<QuickNotePanelDelegate> owner);
  ~FakeQuickNotePanel() override;

  void setParticipants(const std::vector<std::string>& titles,
                       std::optional<std::size_t> selected) override;
  [[nodiscard]] std::optional<std::string> selectedParticipant() const override;
  [[nodiscard]] std::string noteText() const override { return note; }
  void setNoteText(const std::string& text) override { note = text; }
  void focusNote() override { noteFocused = true; }
  void setPlaceholderHidden(bool hidden) override { placeholderHidden = hidden; }
  [[nodiscard]] std::optional<std::size_t> selectedMinutes() const override { return minutes; }
  void deselectMinutes() override { minutes.reset(); }
  void setHint(const std::string& text) override { hint = text; }
  void setStatus(const std::string& text) override { status = text; }
  void setCaught(const std::vector<CaughtRow>& newRows,
                 const std::optional<std::string>& newMore) override;
  void fitToContents() override { ++fits; }
  bool applySavedFrame() override;
  void placeAtBottomRight(double inset) override;

  // What the user does.
  void type(const std::string& text);
  void chooseParticipant(const std::string& title);
  void pickMinutes(int minutesOnSegment);
  void pressSend();
  void clickLog(std::size_t row);
  void clickSkip(std::size_t row);
  void close();

  /// The texts of the rows.
  [[nodiscard]] std::vector<std::string> rowTexts() const;

  QuickNoteTexts texts;
  std::vector<std::string> participants;
  std::optional<std::size_t> selection;
  std::string note;
  std::optional<std::size_t> minutes;
  std::string hint;
  std::string status;
  std::vector<CaughtRow> rows;
  std::optional<std::string> more;
  bool placeholderHidden = false;
  bool noteFocused = false;
  int fits = 0;
  Place place = Place::untouched;
  double inset = 0;

 private:
  FakeViews& views_;
};

}  // namespace notewick
