#pragma once

#include <QComboBox>
#include <QMenu>
#include <QPlainTextEdit>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/quick_note_panel.h"
#include "tests/platform/linux/panels/panel_fixture.h"
#include "tests/support/fake_user_defaults.h"

namespace notewick {

/// Keeps what the panel told.
struct NoteLog : QuickNotePanelDelegate {
  void send() override { log.push_back("send"); }
  void caughtLog(std::size_t tag) override { log.push_back("log " + std::to_string(tag)); }
  void caughtSkip(std::size_t tag) override {
    log.push_back("skip " + std::to_string(tag));
    if (onSkip) onSkip();
  }
  void textDidChange() override { log.push_back("text"); }
  void windowWillClose() override { log.push_back("closed"); }

  Log log;
  std::function<void()> onSkip;
};

/// The quick-note panel with the controls that a user finds in it.
class QuickNotePanelTest : public testing::Test {
 protected:
  void SetUp() override { panel_.setHint("Minutes — you set this."); }

  QWidget& window() { return panel_.window(); }
  QPlainTextEdit& note() { return control<QPlainTextEdit>(window(), "What did you do?"); }
  QComboBox& chooser() { return control<QComboBox>(window(), "Participant"); }
  QAbstractButton& button(const std::string& name) {
    return control<QAbstractButton>(window(), name);
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  std::shared_ptr<NoteLog> delegate_ = std::make_shared<NoteLog>();
  FakeUserDefaults userDefaults_;
  std::unique_ptr<QMenu> offered_;
  QtQuickNotePanel panel_{{"VELK — quick note",
                           "Participant",
                           "What did you do?",
                           "What did you do? One line is enough.",
                           "Minutes",
                           {"15", "30", "45"},
                           "Send to VELK",
                           "Caught — confirm or skip",
                           "Log",
                           "✕"},
                          delegate_,
                          userDefaults_,
                          [this] { return std::move(offered_); }};
};

}  // namespace notewick
