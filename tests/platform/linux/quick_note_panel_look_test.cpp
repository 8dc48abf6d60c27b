// What the quick-note panel looks like, and where it stands.
#include <QLabel>
#include <QScreen>

#include "tests/platform/linux/quick_note_panel_fixture.h"

namespace notewick {
namespace {

TEST_F(QuickNotePanelTest, ReadsLikeTheFormTopToBottom) {
  EXPECT_FALSE(window().isVisible());
  EXPECT_EQ(window().windowTitle(), QStringLiteral("VELK — quick note"));
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

TEST_F(QuickNotePanelTest, KeepsRoomForTheHiddenPlaceholder) {
  panel_.orderFrontRegardless();
  const int before = button("15").mapTo(&window(), QPoint()).y();
  panel_.setPlaceholderHidden(true);
  QApplication::processEvents();
  EXPECT_EQ(button("15").mapTo(&window(), QPoint()).y(), before);
  EXPECT_EQ(visibleLabels(window()).front(), "Minutes — you set this.");
}

TEST_F(QuickNotePanelTest, ShowsALongStatusWholeInTwoLinesBesideTheButton) {
  const std::string text = "No tray here: right-click for the menu";
  panel_.orderFrontRegardless();
  panel_.setStatus(text);
  QTest::qWait(0);
  const QLabel& status = shownLabel(window(), text);
  EXPECT_TRUE(status.wordWrap());
  EXPECT_GE(status.height(), status.heightForWidth(status.width()));
  EXPECT_LE(status.geometry().right(), status.parentWidget()->width());
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

TEST_F(QuickNotePanelTest, HasNoSavedPlaceAtFirst) {
  EXPECT_FALSE(panel_.applySavedFrame());
  panel_.placeAtBottomRight(24);
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_EQ(screen.right() - window().frameGeometry().right(), 24);
  EXPECT_EQ(screen.bottom() - window().frameGeometry().bottom(), 24);
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

}  // namespace
}  // namespace notewick
