#include <QAbstractItemView>
#include <QAction>
#include <QInputMethodEvent>
#include <QTextBlock>
#include <QTextLayout>

#include "tests/platform/linux/quick_note_panel_fixture.h"

namespace notewick {
namespace {

TEST_F(QuickNotePanelTest, ReplacesParticipantsInAnyOrderAndTellsTheChosenOneToTheByte) {
  const std::string marked = "\uFEFFZoë & Co";
  EXPECT_EQ(panel_.selectedParticipant(), std::nullopt);
  panel_.setParticipants({"Alice", "Bob", marked}, 2);
  EXPECT_EQ(panel_.selectedParticipant(), marked);
  panel_.setParticipants({marked, "Abel", "Bob"}, 1);
  EXPECT_EQ(chooser().count(), 3);
  EXPECT_EQ(panel_.selectedParticipant(), "Abel");
  EXPECT_EQ(chooser().itemText(2), QStringLiteral("Bob"));
  panel_.setParticipants({}, std::nullopt);
  EXPECT_EQ(panel_.selectedParticipant(), std::nullopt);
}

/// Notes what lays out, paints or moves a widget.
class Work : public QObject {
 public:
  Work() { qApp->installEventFilter(this); }

  QList<QEvent::Type> done;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    const QList work = {QEvent::LayoutRequest, QEvent::UpdateRequest, QEvent::Paint, QEvent::Resize,
                        QEvent::Move,          QEvent::Show,          QEvent::Hide};
    if (work.contains(event->type())) done << event->type();
    return false;
  }
};

TEST_F(QuickNotePanelTest, DoesNothingToShowWhatItShowsAlready) {
  const auto show = [this](const std::string& status) {
    panel_.setParticipants({"Alice", "Bob"}, 1);
    panel_.setCaught({row("Lena"), row("Zoë")}, "+ 2 more in the menu bar");
    panel_.setStatus(status);
    panel_.setHint("Minutes — you set this.");
    panel_.setPlaceholderHidden(false);
    panel_.fitToContents();
    QApplication::processEvents();
  };
  QApplication::setCursorFlashTime(0);  // a blink is painted, too
  activate(window());
  Work work;
  show("1 queued");
  ASSERT_TRUE(QTest::qWaitFor([&work] {
    work.done.clear();
    QApplication::processEvents();
    return work.done.isEmpty();
  }));
  show("1 queued");
  EXPECT_TRUE(work.done.isEmpty());
  show("2 queued");
  EXPECT_TRUE(work.done.contains(QEvent::Paint));
}

TEST_F(QuickNotePanelTest, KeepsTheOpenListOfParticipantsOpen) {
  panel_.setParticipants({"Alice", "Cleo"}, 0);
  activate(window());
  chooser().showPopup();
  panel_.setParticipants({"Alice", "Bob", "Cleo"}, 0);
  EXPECT_TRUE(chooser().view()->isVisible());
  EXPECT_EQ(chooser().count(), 3);
  chooser().hidePopup();
}

TEST_F(QuickNotePanelTest, TellsOfTextThatTheUserTypes) {
  activate(window());
  panel_.focusNote();
  QTest::keyClicks(&note(), "ok");
  EXPECT_EQ(delegate_->log, (Log{"text", "text"}));
  EXPECT_EQ(panel_.noteText(), "ok");
}

TEST_F(QuickNotePanelTest, KeepsBlanksThatDoNotBreak) {
  note().insertPlainText(QStringLiteral("10\u00A0km\u2028to\u202FLena\nand back"));
  EXPECT_EQ(panel_.noteText(), "10\u00A0km\nto\u202FLena\nand back");
}

TEST_F(QuickNotePanelTest, TellsNothingOfWhatTheProgramSets) {
  panel_.setNoteText("Called Zoë");
  panel_.setNoteText("");
  panel_.setParticipants({"Alice"}, 0);
  panel_.deselectMinutes();
  panel_.setCaught({row("Lena")}, std::nullopt);
  panel_.orderFrontRegardless();
  panel_.orderOut();
  EXPECT_EQ(delegate_->log, Log{});
}

TEST_F(QuickNotePanelTest, LeavesACompositionAloneWhenTheTextStaysTheSame) {
  activate(window());
  panel_.focusNote();
  QInputMethodEvent composing(QStringLiteral("か"), {});
  QApplication::sendEvent(&note(), &composing);
  panel_.setNoteText(panel_.noteText());
  EXPECT_EQ(note().textCursor().block().layout()->preeditAreaText(), QStringLiteral("か"));
}

TEST_F(QuickNotePanelTest, HasNoMinutesChosenAtFirstAndAgainAfterDeselecting) {
  activate(window());
  EXPECT_EQ(panel_.selectedMinutes(), std::nullopt);
  QTest::mouseClick(&button("30"), Qt::LeftButton);
  EXPECT_EQ(focused(), "What did you do?") << "where the user types";
  EXPECT_EQ(panel_.selectedMinutes(), 1U);
  button("30").click();
  EXPECT_EQ(panel_.selectedMinutes(), 1U) << "a chosen segment stays chosen";
  panel_.deselectMinutes();
  EXPECT_EQ(panel_.selectedMinutes(), std::nullopt);
  button("45").click();
  EXPECT_EQ(panel_.selectedMinutes(), 2U);
}

TEST_F(QuickNotePanelTest, BreaksTheLineWithReturnAndSendsWithControlReturn) {
  activate(window());
  panel_.focusNote();
  press(Qt::Key_Return);
  EXPECT_EQ(panel_.noteText(), "\n");
  delegate_->log.clear();
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(panel_.noteText(), "\n");
  EXPECT_EQ(delegate_->log, Log{"send"});
}

TEST_F(QuickNotePanelTest, SendsWithReturnFromTheChooserTheMinutesAndTheButton) {
  activate(window());
  for (const char* name : {"Participant", "15", "Send to VELK"}) {
    control<QWidget>(window(), name).setFocus();
    press(Qt::Key_Return);
  }
  EXPECT_EQ(delegate_->log, (Log{"send", "send", "send"}));
}

TEST_F(QuickNotePanelTest, AKeyThatIsHeldDownPressesAButtonOnce) {
  panel_.setCaught({row("Lena"), row("Tobias"), row("Zoe")}, std::nullopt);
  activate(window());
  delegate_->onSkip = [this] { panel_.setCaught({row("Tobias"), row("Zoe")}, std::nullopt); };
  for (const char* name : {"Skip Lena", "Send to VELK", "Participant"}) {
    control<QWidget>(window(), name).setFocus();
    for (const bool repeats : {false, true, true}) {
      QKeyEvent pressed(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", repeats);
      QApplication::sendEvent(QApplication::focusWidget(), &pressed);
    }
  }
  EXPECT_EQ(delegate_->log, (Log{"skip 0", "send", "send"}));
}

TEST_F(QuickNotePanelTest, IsWorkedByTheKeyboardAlone) {
  panel_.setParticipants({"Alice", "Bob"}, 0);
  panel_.setCaught({row("Lena")}, std::nullopt);
  activate(window());
  chooser().setFocus();
  EXPECT_EQ(tabOrder(), (std::vector<std::string>{"Participant", "What did you do?", "15",
                                                  "Send to VELK", "Log Lena", "Skip Lena"}));
  press(Qt::Key_Down);
  EXPECT_EQ(panel_.selectedParticipant(), "Bob");
  button("15").setFocus();
  press(Qt::Key_Right);
  EXPECT_EQ(focused(), "30");
  press(Qt::Key_Space);
  EXPECT_EQ(panel_.selectedMinutes(), 1U);
  press(Qt::Key_Left);
  EXPECT_EQ(focused(), "15");
}

TEST_F(QuickNotePanelTest, StartsInTheNoteAndReturnsToItWhenAskedOrWhenTheLastRowGoes) {
  panel_.setCaught({row("Lena")}, std::nullopt);
  activate(window());
  EXPECT_EQ(focused(), "What did you do?");
  button("15").setFocus();
  panel_.makeKeyAndOrderFront();
  EXPECT_EQ(focused(), "What did you do?");
  button("Skip Lena").setFocus();
  panel_.setCaught({}, std::nullopt);
  EXPECT_EQ(focused(), "What did you do?");
}

TEST_F(QuickNotePanelTest, TellsNothingWhenTheApplicationQuits) {
  activate(window());
  QTimer::singleShot(0, qApp, [] { QApplication::quit(); });
  QApplication::exec();
  EXPECT_EQ(delegate_->log, Log{});
}

TEST_F(QuickNotePanelTest, TellsOfACloseByTheUserAndLivesOn) {
  activate(window());
  closeByUser(window());
  EXPECT_EQ(delegate_->log, Log{"closed"});
  EXPECT_FALSE(window().isVisible());
  panel_.orderFrontRegardless();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(QuickNotePanelTest, DropsWhatHappensAfterTheDelegateIsGone) {
  activate(window());
  const std::weak_ptr<NoteLog> gone = delegate_;
  delegate_.reset();
  QTest::keyClicks(&note(), "ok");
  button("Send to VELK").click();
  closeByUser(window());
  EXPECT_TRUE(gone.expired());
}

TEST_F(QuickNotePanelTest, OffersTheMenuByMouseAndKeyboardUnlessTheTrayHasIt) {
  activate(window());
  for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
    QContextMenuEvent asked(reason, QPoint(2, 2), window().mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&window(), &asked);
    EXPECT_FALSE(asked.isAccepted());
    offered_ = std::make_unique<QMenu>();
    offered_->addAction("Log work now");
    const QPointer<QMenu> menu(offered_.get());
    QApplication::sendEvent(&window(), &asked);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
  }
}

}  // namespace
}  // namespace notewick
