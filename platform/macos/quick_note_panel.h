#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/panels/caught_list.h"
#include "platform/macos/panels/floating_panel.h"
#include "platform/quick_note_panel.h"

/// Takes what the controls and the window tell and hands it to the panel's delegate.
@interface NWQuickNoteEvents : NSObject <NSWindowDelegate, NSTextViewDelegate, NWCaughtListTarget>
- (instancetype)initWithDelegate:(std::weak_ptr<notewick::QuickNotePanelDelegate>)delegate;
- (void)send:(id)sender;
@end

namespace notewick {

/// The quick-note panel in native controls. Its frame is kept by the window's own autosave, which
/// the window reads once: from then on it stands where it was left. While the user drags it nothing
/// changes its size or its place.
class CocoaQuickNotePanel final : public CocoaPanel<QuickNotePanel> {
 public:
  CocoaQuickNotePanel(const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate);
  /// Gives the name back under which the frame is kept: only one window at a time may have it.
  ~CocoaQuickNotePanel() override;

  /// The keyboard goes to the note, whatever had it the last time: what is typed next is a note.
  void makeKeyAndOrderFront() override;

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
  void fitToContents() override;
  bool applySavedFrame() override;
  void placeAtBottomRight(double inset) override;

 private:
  void showCaught(const std::vector<CaughtRow>& rows, const std::optional<std::string>& more);
  void setUpPanel(const QuickNoteTexts& texts);
  [[nodiscard]] NSView* contents(const QuickNoteTexts& texts);
  [[nodiscard]] NSView* noteBox(const QuickNoteTexts& texts);

  NWQuickNoteEvents* events_;
  bool hasPlace_ =
      false;  ///< a frame was saved by an earlier run, or this run has placed the panel
  std::vector<std::string> titles_;  ///< the chooser's, to the byte
  NSPopUpButton* participants_;
  NSTextView* note_;
  NSTextField* placeholder_;
  NSSegmentedControl* minutes_;
  NSTextField* hint_;
  NSButton* send_;
  NSTextField* status_;
  NSTextField* caughtHeader_;
  CaughtList caught_;
};

}  // namespace notewick
