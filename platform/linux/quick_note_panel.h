#pragma once

#include <QRect>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/panels/floating_panel.h"
#include "platform/quick_note_panel.h"

namespace notewick {

class AnnouncingLabel;
class CaughtList;
class Chooser;
class Label;
class NoteField;
class SegmentedControl;
class UserDefaults;

/// The quick-note panel in widgets. The place the user gives it is kept in the user's settings
/// under "VELKQuickWidget": the frame's left, top, width and height, with blanks between them.
class QtQuickNotePanel final : public QuickNotePanel {
 public:
  using WindowMenu = std::function<std::unique_ptr<QMenu>()>;

  QtQuickNotePanel(const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate,
                   UserDefaults& userDefaults, WindowMenu windowMenu);
  ~QtQuickNotePanel() override;

  void orderFrontRegardless() override { window_.orderFrontRegardless(); }
  /// The keyboard goes to the note, whatever had it the last time: what is typed next is a note.
  void makeKeyAndOrderFront() override;
  void orderOut() override { window_.orderOut(); }

  void setParticipants(const std::vector<std::string>& titles,
                       std::optional<std::size_t> selected) override;
  [[nodiscard]] std::optional<std::string> selectedParticipant() const override;
  [[nodiscard]] std::string noteText() const override;
  void setNoteText(const std::string& text) override;
  void focusNote() override;
  void setPlaceholderHidden(bool hidden) override;
  [[nodiscard]] std::optional<std::size_t> selectedMinutes() const override;
  void deselectMinutes() override;
  void setHint(const std::string& text) override;
  void setStatus(const std::string& text) override;
  void setCaught(const std::vector<CaughtRow>& rows,
                 const std::optional<std::string>& more) override;
  void fitToContents() override { window_.fitToContents(); }
  bool applySavedFrame() override;
  void placeAtBottomRight(double inset) override;

  /// The window itself, for tests.
  [[nodiscard]] QWidget& window() { return window_; }

 private:
  using Event = std::function<void(QuickNotePanelDelegate&)>;

  void build(const QuickNoteTexts& texts);
  [[nodiscard]] QWidget* noteField(const QuickNoteTexts& texts);
  [[nodiscard]] QWidget* sendRow(const QuickNoteTexts& texts);
  [[nodiscard]] QWidget* sendButton(const std::string& title);
  [[nodiscard]] QWidget* caughtList(const QuickNoteTexts& texts);
  void forward(const Event& event) const;  ///< to the delegate, if it is still there
  void saveFrame();

  std::weak_ptr<QuickNotePanelDelegate> delegate_;
  UserDefaults& userDefaults_;
  PanelWindow window_;
  std::optional<QRect> savedFrame_;
  std::vector<std::string> titles_;  ///< the chooser's, to the byte
  QTimer saveSoon_;
  Chooser* participants_ = nullptr;
  NoteField* note_ = nullptr;
  Label* placeholder_ = nullptr;
  SegmentedControl* minutes_ = nullptr;
  Label* hint_ = nullptr;
  AnnouncingLabel* status_ = nullptr;
  Label* caughtHeader_ = nullptr;
  CaughtList* caught_ = nullptr;
};

}  // namespace notewick
