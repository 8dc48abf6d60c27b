#include "platform/linux/panels/caught_list.h"

#include <QLabel>

#include "tests/platform/linux/panels/panel_fixture.h"

namespace notewick {
namespace {

const std::string LONG_ROW = "Maximiliane Featherstonehaugh-Cholmondeley · ~12m · 2024-05-02";

class CaughtListTest : public testing::Test {
 protected:
  void set(const std::vector<CaughtRow>& rows) { kept_ = list_.setRows(rows, std::nullopt); }
  QPushButton& button(const std::string& name) { return control<QPushButton>(list_, name); }
  void focus(const std::string& name) {
    activate(list_);
    button(name).setFocus();
  }

  Log log_;
  bool kept_ = false;
  std::function<void(std::size_t tag)> wasSkipped_;
  CaughtList list_{296, "Log", "✕",
                   [this](std::size_t tag) { log_.push_back("log " + std::to_string(tag)); },
                   [this](std::size_t tag) {
                     log_.push_back("skip " + std::to_string(tag));
                     if (wasSkipped_) wasSkipped_(tag);
                   }};
};

TEST_F(CaughtListTest, TellsWhichRowWasPressed) {
  set({row("a"), row("b"), row("c")});
  button("Log b").click();
  button("Skip c").click();
  button("Log a").click();
  EXPECT_EQ(log_, (Log{"log 1", "skip 2", "log 0"}));
}

TEST_F(CaughtListTest, CutsALongTextAndShowsItWholeAsToolTip) {
  set({row(LONG_ROW)});
  QLabel& label = control<QLabel>(list_, LONG_ROW);
  EXPECT_TRUE(label.text().endsWith(QStringLiteral("…")));
  activate(list_);
  EXPECT_LE(label.geometry().right(), button("Log " + LONG_ROW).x());
  EXPECT_EQ(button("Skip " + LONG_ROW).geometry().right(), list_.rect().right());
  EXPECT_TRUE(label.toolTip().contains(QStringLiteral("Cholmondeley")));
}

TEST_F(CaughtListTest, ShowsAUsualNameWithItsDayWholeAndWithoutToolTip) {
  const std::string usual = "Lena O'Keefe · ~12m · 2024-05-02";
  set({row(usual)});
  EXPECT_EQ(control<QLabel>(list_, usual).text().toStdString(), usual);
  EXPECT_TRUE(control<QLabel>(list_, usual).toolTip().isEmpty());
}

TEST_F(CaughtListTest, LeavesRowsThatStayTheSameAlone) {
  set({row("a"), row("b")});
  QPushButton& before = button("Log a");
  set({row("a"), row("b")});
  EXPECT_EQ(&button("Log a"), &before);
}

TEST_F(CaughtListTest, ForgetsAPressThatBeganOnARowThatIsGone) {
  set({row("a"), row("b")});
  activate(list_);
  const QPointer<QPushButton> pressed(&button("Skip a"));
  QTest::mousePress(pressed, Qt::LeftButton);
  set({row("b")});
  if (pressed) QTest::mouseRelease(pressed, Qt::LeftButton);
  EXPECT_EQ(log_, Log{});
}

/// Rows that go when they are skipped, so that the next one moves up under the mouse.
class SkippedRows : public CaughtListTest {
 protected:
  SkippedRows() {
    set(rows_);
    activate(list_);
    wasSkipped_ = [this](std::size_t tag) {
      rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(tag));
      set(rows_);
      list_.adjustSize();
    };
  }

  /// The middle of the button in the window, to which a mouse sends its events.
  QPoint place(const std::string& name) {
    return button(name).mapTo(&list_, button(name).rect().center());
  }

  std::vector<CaughtRow> rows_{row("a"), row("b"), row("c")};
};

TEST_F(SkippedRows, ADoubleClickSkipsOneRow) {
  QTest::mouseDClick(list_.windowHandle(), Qt::LeftButton, {}, place("Skip a"));
  EXPECT_EQ(log_, Log{"skip 0"});
  EXPECT_EQ(rows_.front().text, "b");
}

TEST_F(SkippedRows, TwoClicksSkipTwoRows) {
  const QPoint top = place("Skip a");
  for (int click = 0; click < 2; ++click) {
    QTest::mouseClick(list_.windowHandle(), Qt::LeftButton, {}, top);
  }
  EXPECT_EQ(log_, (Log{"skip 0", "skip 0"}));
  EXPECT_EQ(rows_.front().text, "c");
}

TEST_F(CaughtListTest, LetsTheFocusFollowItsRowAndMovesItOnWhenTheRowGoes) {
  set({row("a"), row("b")});
  EXPECT_TRUE(kept_);
  EXPECT_EQ(focused(), "nothing");
  focus("Log b");
  set({row("new"), row("a"), row("b"), row("c")});
  EXPECT_EQ(focused(), "Log b");
  set({row("a"), row("c")});
  EXPECT_EQ(focused(), "Log c");
  set({row("a")});
  EXPECT_EQ(focused(), "Log a");
  EXPECT_TRUE(kept_);
  set({});
  EXPECT_FALSE(kept_);
}

}  // namespace
}  // namespace notewick
