#pragma once

#include "platform/macos/quick_note_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"
#include "tests/macos/eventually.h"
#include "tests/macos/view_search.h"

namespace notewick {

inline const QuickNoteTexts TEXTS = {"VELK — quick note",
                                     "Participant",
                                     "What did you do?",
                                     "One line is enough.",
                                     "Minutes",
                                     {"15", "120"},
                                     "Send to VELK",
                                     "Caught",
                                     "Log",
                                     "✕"};

inline const std::vector<CaughtRow> TWO_ROWS = {
    {"Lena O'Keefe · ~12m · 2024-05-02", "Log Lena", "Skip Lena"},
    {"Tobias Hargreave · ~3m · 2024-05-02", "Log Tobias", "Skip Tobias"}};

/// Writes down what the panel tells.
class RecordingDelegate : public QuickNotePanelDelegate {
 public:
  void send() override { log.push_back("send"); }
  void caughtLog(std::size_t tag) override { log.push_back("log " + std::to_string(tag)); }
  void caughtSkip(std::size_t tag) override { log.push_back("skip " + std::to_string(tag)); }
  void textDidChange() override { log.push_back("text"); }
  void windowWillClose() override { log.push_back("close"); }

  std::vector<std::string> log;
};

/// A panel that nobody has placed yet, with an idle form.
class MacosQuickNotePanelTest : public testing::Test {
 protected:
  MacosQuickNotePanelTest() {
    [NSWindow removeFrameUsingName:@"VELKQuickWidget"];
    remake();
  }

  void remake() {
    panel_.reset();
    panel_ = std::make_unique<CocoaQuickNotePanel>(TEXTS, delegate_);
    panel_->setHint("Minutes — you set this.");
    panel_->setCaught({}, std::nullopt);
    panel_->fitToContents();
  }

  [[nodiscard]] NSPanel* native() const { return panel_->native(); }
  [[nodiscard]] NSRect visible() const { return NSScreen.mainScreen.visibleFrame; }
  template <class View>
  [[nodiscard]] View* only(Class kind) const {
    const auto found = viewsOf(native(), kind);
    EXPECT_EQ(found.size(), 1U);
    return static_cast<View*>(found.at(0));
  }
  [[nodiscard]] NSTextView* note() const { return only<NSTextView>(NSTextView.class); }

  /// Whether the panel takes Return, pressed with these modifiers, before its controls get it.
  bool takesReturn(NSEventModifierFlags modifiers, NSString* key = @"\r",
                   BOOL repeated = NO) const {
    NSEvent* pressed = [NSEvent keyEventWithType:NSEventTypeKeyDown
                                        location:NSMakePoint(0, 0)
                                   modifierFlags:modifiers
                                       timestamp:0
                                    windowNumber:native().windowNumber
                                         context:nil
                                      characters:key
                     charactersIgnoringModifiers:key
                                       isARepeat:repeated
                                         keyCode:0];
    return [native() performKeyEquivalent:pressed];
  }
  /// What the tabulator key goes through after the note, were every control to take the keyboard.
  [[nodiscard]] std::vector<NSView*> keyViewLoop() const {
    [native() selectKeyViewFollowingView:note()];
    std::vector<NSView*> loop;
    for (NSView* view = note().nextKeyView; view != nil && view != note() && loop.size() < 100;
         view = view.nextKeyView) {
      loop.push_back(view);
    }
    return loop;
  }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::unique_ptr<CocoaQuickNotePanel> panel_;
};

}  // namespace notewick
