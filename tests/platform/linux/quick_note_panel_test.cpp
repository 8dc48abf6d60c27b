#include "platform/linux/quick_note_panel.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextBlock>
#include <QTextLayout>

#include "platform/linux/panel_look.h"
#include "tests/platform/linux/panel_fixture.h"
#include "tests/support/fake_user_defaults.h"

namespace notewick {
namespace {

struct Delegate : QuickNotePanelDelegate {
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

CaughtRow row(const std::string& name) {
  return {name, "Log " + name, "Skip " + name};
}

class QuickNotePanelTest : public testing::Test {
 protected:
  void SetUp() override { panel_.setHint("Minutes — you set this."); }

  QWidget& window() { return panel_.window(); }
  QPlainTextEdit& note() { return control<QPlainTextEdit>(window(), "What did you do?"); }
  QComboBox& chooser() { return control<QComboBox>(window(), "Participant"); }
  QAbstractButton& button(const std::string& name) {
    return control<QAbstractButton>(window(), name);
  }
  static std::string focused() {
    const QWidget* const widget = QApplication::focusWidget();
    return widget != nullptr ? widget->accessibleName().toStdString() : "nothing";
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  std::shared_ptr<Delegate> delegate_ = std::make_shared<Delegate>();
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

TEST_F(QuickNotePanelTest, IsTitledAndHiddenAtFirst) {
  EXPECT_FALSE(window().isVisible());
  EXPECT_EQ(window().windowTitle(), QStringLiteral("VELK — quick note"));
}

TEST_F(QuickNotePanelTest, ReadsLikeTheFormTopToBottom) {
  panel_.setStatus("2 queued — will retry");
  panel_.setCaught({row("Lena · ~12m · 2024-05-02")}, "+ 2 more in the menu bar");
  panel_.orderFrontRegardless();
  EXPECT_EQ(
      visibleLabels(window()),
      (std::vector<std::string>{"What did you do? One line is enough.", "Minutes — you set this.",
                                "2 queued — will retry", "Caught — confirm or skip",
                                "Lena · ~12m · 2024-05-02", "+ 2 more in the menu bar"}));
  const auto top = [this](const QWidget& of) { return of.mapTo(&window(), QPoint()).y(); };
  const int placeholder = top(shownLabel(window(), "What did you do? One line is enough."));
  EXPECT_LT(top(chooser()), top(note()));
  EXPECT_LT(top(note()), placeholder);
  EXPECT_LT(placeholder, top(button("15")));
  EXPECT_LT(top(button("15")), top(shownLabel(window(), "Minutes — you set this.")));
}

TEST_F(QuickNotePanelTest, ChoosesTheParticipantItIsTold) {
  EXPECT_EQ(panel_.selectedParticipant(), std::nullopt);
  panel_.setParticipants({"Alice", "Bob", "Zoë & Co"}, 2);
  EXPECT_EQ(panel_.selectedParticipant(), "Zoë & Co");
  panel_.setParticipants({}, std::nullopt);
  EXPECT_EQ(panel_.selectedParticipant(), std::nullopt);
}

TEST_F(QuickNotePanelTest, ReplacesParticipantsInAnyOrder) {
  panel_.setParticipants({"Alice", "Bob", "Cleo"}, 1);
  panel_.setParticipants({"Cleo", "Abel", "Bob"}, 1);
  EXPECT_EQ(chooser().count(), 3);
  EXPECT_EQ(panel_.selectedParticipant(), "Abel");
  EXPECT_EQ(chooser().itemText(0), QStringLiteral("Cleo"));
  EXPECT_EQ(chooser().itemText(2), QStringLiteral("Bob"));
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

TEST_F(QuickNotePanelTest, TellsTheChosenTitleToTheByte) {
  const std::string marked = "\uFEFFLena O'Keefe";
  panel_.setParticipants({"Bob", marked}, 1);
  EXPECT_EQ(panel_.selectedParticipant(), marked);
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

TEST_F(QuickNotePanelTest, KeepsRoomForTheHiddenPlaceholder) {
  panel_.orderFrontRegardless();
  const int before = button("15").mapTo(&window(), QPoint()).y();
  panel_.setPlaceholderHidden(true);
  QApplication::processEvents();
  EXPECT_EQ(button("15").mapTo(&window(), QPoint()).y(), before);
  EXPECT_EQ(visibleLabels(window()).front(), "Minutes — you set this.");
}

TEST_F(QuickNotePanelTest, HasNoMinutesChosenAtFirstAndAgainAfterDeselecting) {
  EXPECT_EQ(panel_.selectedMinutes(), std::nullopt);
  button("30").click();
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

TEST_F(QuickNotePanelTest, PressesAButtonOfARowWithReturn) {
  panel_.setCaught({row("Lena"), row("Tobias")}, std::nullopt);
  activate(window());
  button("Log Tobias").setFocus();
  press(Qt::Key_Return);
  button("Skip Lena").setFocus();
  press(Qt::Key_Space);
  EXPECT_EQ(delegate_->log, (Log{"log 1", "skip 0"}));
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
}

TEST_F(QuickNotePanelTest, MovesBetweenMinutesWithTheArrowKeys) {
  activate(window());
  button("15").setFocus();
  press(Qt::Key_Right);
  EXPECT_EQ(focused(), "30");
  press(Qt::Key_Space);
  EXPECT_EQ(panel_.selectedMinutes(), 1U);
  press(Qt::Key_Left);
  EXPECT_EQ(focused(), "15");
}

TEST_F(QuickNotePanelTest, StartsInTheNote) {
  activate(window());
  EXPECT_EQ(focused(), "What did you do?");
}

TEST_F(QuickNotePanelTest, ReturnsToTheNoteWhenItIsGivenTheKeyboard) {
  activate(window());
  button("15").setFocus();
  panel_.makeKeyAndOrderFront();
  EXPECT_EQ(focused(), "What did you do?");
}

TEST_F(QuickNotePanelTest, ShowsTheHeaderOnlyWithRows) {
  panel_.orderFrontRegardless();
  const auto shown = [this] {
    const auto labels = visibleLabels(window());
    return std::count(labels.begin(), labels.end(), "Caught — confirm or skip") == 1;
  };
  EXPECT_FALSE(shown());
  panel_.setCaught({row("Lena")}, std::nullopt);
  EXPECT_TRUE(shown());
  panel_.setCaught({}, std::nullopt);
  EXPECT_FALSE(shown());
}

TEST_F(QuickNotePanelTest, GrowsAndShrinksWithItsRows) {
  panel_.fitToContents();
  const QSize empty = window().size();
  panel_.setCaught({row("Lena"), row("Tobias")}, std::nullopt);
  panel_.fitToContents();
  EXPECT_GT(window().height(), empty.height() + 40);
  EXPECT_EQ(window().width(), empty.width());
  panel_.setCaught({}, std::nullopt);
  panel_.fitToContents();
  EXPECT_EQ(window().size(), empty);
}

TEST_F(QuickNotePanelTest, GrowsWithEachRowAtOnceWhileItIsShown) {
  panel_.orderFrontRegardless();
  std::vector<CaughtRow> rows{row("Lena")};
  panel_.setCaught(rows, std::nullopt);
  panel_.fitToContents();
  QTest::qWait(0);
  for (const char* name : {"Tobias", "Zoë"}) {
    const int before = window().height();
    rows.push_back(row(name));
    panel_.setCaught(rows, std::nullopt);
    panel_.fitToContents();
    EXPECT_GT(window().height(), before);
    EXPECT_EQ(window().height(), window().sizeHint().height());
  }
}

TEST_F(QuickNotePanelTest, IsAsWideAsItsContentsAndInsets) {
  panel_.fitToContents();
  EXPECT_EQ(window().width(), 296 + 2 * 12);
  EXPECT_EQ(note().height(), 56);
  EXPECT_EQ(note().width(), 296);
}

TEST_F(QuickNotePanelTest, KeepsTheDistancesOfItsForm) {
  panel_.setStatus("2 queued — will retry");
  panel_.setCaught({row("Lena"), row("Tobias")}, "+ 2 more in the menu bar");
  panel_.fitToContents();
  activate(window());
  EXPECT_EQ(gaps(window()), (std::vector<int>{12, 8, 8, 8, 8, 8, 8, 8, 12}));
  EXPECT_EQ(gaps(*button("Log Lena").parentWidget()->parentWidget()),
            (std::vector<int>{0, 4, 4, 0}));
  EXPECT_EQ(button("Skip Lena").x() - button("Log Lena").geometry().right() - 1, 6);
  const QLabel& status = shownLabel(window(), "2 queued — will retry");
  EXPECT_EQ(status.x() - button("Send to VELK").geometry().right() - 1, 8);
  EXPECT_EQ(note().verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_EQ(note().viewport()->mapToParent(note().cursorRect().topLeft()), QPoint(2 + 4, 2 + 6));
}

TEST_F(QuickNotePanelTest, SetsEachTextInItsSizeAndShade) {
  panel_.setStatus("2 queued — will retry");
  panel_.setCaught({row("Lena")}, "+ 2 more in the menu bar");
  activate(window());
  const auto expectLook = [this](const char* text, int size, int weight, Tint tint) {
    const QLabel& label = shownLabel(window(), text);
    EXPECT_EQ(label.font().pixelSize(), size) << text;
    EXPECT_EQ(label.font().weight(), weight) << text;
    EXPECT_EQ(label.palette().color(QPalette::WindowText), tinted(window().palette(), tint))
        << text;
  };
  expectLook("What did you do? One line is enough.", 11, QFont::Normal, Tint::tertiary);
  expectLook("Minutes — you set this.", 10, QFont::Normal, Tint::secondary);
  expectLook("2 queued — will retry", 10, QFont::Normal, Tint::secondary);
  expectLook("Caught — confirm or skip", 11, QFont::Bold, Tint::secondary);
  expectLook("Lena", 11, QFont::Normal, Tint::primary);
  expectLook("+ 2 more in the menu bar", 10, QFont::Normal, Tint::tertiary);
  EXPECT_EQ(note().font().pixelSize(), 13);
}

TEST_F(QuickNotePanelTest, ToleratesARowThatGoesWhileItsButtonIsPressed) {
  panel_.setCaught({row("Lena"), row("Tobias")}, std::nullopt);
  activate(window());
  delegate_->onSkip = [this] { panel_.setCaught({row("Tobias")}, std::nullopt); };
  button("Skip Lena").setFocus();
  press(Qt::Key_Space);
  EXPECT_EQ(delegate_->log, Log{"skip 0"});
  EXPECT_EQ(focused(), "Skip Tobias");
}

TEST_F(QuickNotePanelTest, PutsTheFocusIntoTheNoteWhenTheLastRowGoes) {
  panel_.setCaught({row("Lena")}, std::nullopt);
  activate(window());
  button("Skip Lena").setFocus();
  panel_.setCaught({}, std::nullopt);
  EXPECT_EQ(focused(), "What did you do?");
}

TEST_F(QuickNotePanelTest, TellsOfACloseByTheUserAndLivesOn) {
  activate(window());
  closeByUser(window());
  EXPECT_EQ(delegate_->log, Log{"closed"});
  EXPECT_FALSE(window().isVisible());
  panel_.orderFrontRegardless();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(QuickNotePanelTest, TellsNothingWhenTheApplicationQuits) {
  activate(window());
  QTimer::singleShot(0, qApp, [] { QApplication::quit(); });
  QApplication::exec();
  EXPECT_EQ(delegate_->log, Log{});
}

TEST_F(QuickNotePanelTest, DropsWhatHappensAfterTheDelegateIsGone) {
  activate(window());
  delegate_.reset();
  QTest::keyClicks(&note(), "ok");
  button("Send to VELK").click();
  closeByUser(window());
  EXPECT_FALSE(window().isVisible());
}

TEST_F(QuickNotePanelTest, HasNoSavedPlaceAtFirst) {
  EXPECT_FALSE(panel_.applySavedFrame());
  panel_.placeAtBottomRight(24);
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_EQ(screen.right() - window().frameGeometry().right(), 24);
  EXPECT_EQ(screen.bottom() - window().frameGeometry().bottom(), 24);
}

TEST_F(QuickNotePanelTest, StaysInItsCornerWhenItGrows) {
  panel_.placeAtBottomRight(24);
  const QPoint corner = window().frameGeometry().bottomRight();
  panel_.setCaught({row("Lena"), row("Tobias")}, std::nullopt);
  panel_.fitToContents();
  EXPECT_EQ(window().frameGeometry().bottomRight(), corner);
}

TEST_F(QuickNotePanelTest, ReturnsToASavedPlace) {
  const QSize size = window().size();
  userDefaults_.setString("VELKQuickWidget", "40 50 " + std::to_string(size.width()) + " " +
                                                 std::to_string(size.height()));
  QtQuickNotePanel second({}, delegate_, userDefaults_, nullptr);
  EXPECT_TRUE(second.applySavedFrame());
  EXPECT_EQ(second.window().frameGeometry().topLeft(), QPoint(40, 50));
}

TEST_F(QuickNotePanelTest, KeepsThePlaceThatTheUserGaveItEvenAtTheEnd) {
  auto second =
      std::make_unique<QtQuickNotePanel>(QuickNoteTexts{}, delegate_, userDefaults_, nullptr);
  dynamic_cast<PanelWindow&>(second->window()).userMoved(QRect(-40, 50, 320, 300));
  second.reset();
  EXPECT_EQ(userDefaults_.string("VELKQuickWidget"), "-40 50 320 300");
}

TEST_F(QuickNotePanelTest, TakesADamagedPlaceForNone) {
  for (const char* const damaged : {"", "bottom left", "7", "1 2 3", "1 2 3 x", "1 2 3 4 5",
                                    "1 2 0 0", " 1 2 3 4", "99999999999 2 3 4"}) {
    userDefaults_.setString("VELKQuickWidget", damaged);
    QtQuickNotePanel second({}, delegate_, userDefaults_, nullptr);
    EXPECT_FALSE(second.applySavedFrame()) << damaged;
  }
}

TEST_F(QuickNotePanelTest, OffersTheMenuOfTheWindowByMouseAndKeyboard) {
  activate(window());
  for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
    offered_ = std::make_unique<QMenu>();
    offered_->addAction("Log work now");
    const QPointer<QMenu> menu(offered_.get());
    QContextMenuEvent asked(reason, QPoint(2, 2), window().mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&window(), &asked);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
  }
}

TEST_F(QuickNotePanelTest, OffersNoMenuWhereTheTrayHasIt) {
  activate(window());
  QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(2, 2), QPoint(2, 2));
  QApplication::sendEvent(&window(), &asked);
  EXPECT_FALSE(asked.isAccepted());
}

TEST_F(QuickNotePanelTest, GivesEveryControlAnAccessibleName) {
  panel_.setParticipants({"Alice"}, 0);
  panel_.setCaught({row("Lena")}, std::nullopt);
  activate(window());
  for (const QWidget* widget : window().findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus) {
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->metaObject()->className();
    }
  }
}

}  // namespace
}  // namespace notewick
