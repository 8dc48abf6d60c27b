#include "platform/linux/tray/menu_renderer.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QEvent>
#include <random>

namespace notewick {
namespace {

MenuItem item(const std::string& title, std::optional<MenuAction> action = MenuAction::logNow,
              const std::string& key = "") {
  return {title, action, key, std::nullopt, false};
}

MenuItem separator() {
  return {"", std::nullopt, "", std::nullopt, true};
}

/// What is shown for a label of com.canonical.dbusmenu, as Qt sends it: it makes an access
/// key of the first `&` unless that is the last character.
std::string shownByTrayHost(QString label) {
  const auto first = label.indexOf(QLatin1Char('&'));
  if (first >= 0 && first + 1 < label.size()) label[first] = QLatin1Char('_');
  QString shown;
  for (qsizetype i = 0; i < label.size(); ++i) {
    if (label[i] == QLatin1Char('_')) ++i;
    if (i < label.size()) shown += label[i];
  }
  return shown.toStdString();
}

std::string shownByQt(QString label) {
  return label.replace(QLatin1String("&&"), QLatin1String("\1"))
      .remove(QLatin1Char('&'))
      .replace(QLatin1Char('\1'), QLatin1Char('&'))
      .toStdString();
}

TEST(MenuRenderer, ShowsTitlesToTheLetter) {
  for (const std::string title :
       {"Log: Lena O'Keefe (~12 min, 2024-05-02)", "Snow & Sons", "A & B & C", "R&D", "Tom &",
        "& Sons", "&", "a&&b", "anna_b@example.org", "_private_", "__", "x_&_y",
        "⚠️ Can't see your screen yet — click to fix", "Watching · 1 participants"}) {
    EXPECT_EQ(shownByTrayHost(menuText(title, MenuReader::trayHost)), title);
    EXPECT_EQ(shownByQt(menuText(title, MenuReader::qt)), title);
  }
}

/// What a user sees of a menu, and what choosing each of its lines hands back.
struct Shown {
  QStringList lines;
  std::vector<MenuItem> chosen;

  friend bool operator==(const Shown&, const Shown&) = default;
};

/// A drawn menu, drawn time and again.
class DrawnMenu {
 public:
  void draw(const Menu& menu, QObject* exported = nullptr) {
    drawMenu(
        drawing_, menu, MenuReader::trayHost,
        [this](const MenuItem& got) { chosen_.push_back(got); }, exported);
  }

  [[nodiscard]] QList<QAction*> actions() const { return drawing_.actions(); }

  [[nodiscard]] Shown shown() {
    chosen_.clear();
    QStringList lines;
    for (QAction* action : actions()) {
      lines << QStringLiteral("%1|%2|%3|%4|%5")
                   .arg(action->text(), action->shortcut().toString())
                   .arg(action->isSeparator())
                   .arg(action->isEnabled())
                   .arg(action->shortcutContext());
      action->trigger();
    }
    return {lines, chosen_};
  }

 private:
  QMenu drawing_;
  std::vector<MenuItem> chosen_;
};

TEST(MenuRenderer, DrawsItemsInOrderAndHandsBackTheWholeItem) {
  MenuItem pending = item("Log: Lena", MenuAction::openPending);
  pending.representedObject = "id 7";
  const MenuItem quit = item("Quit", MenuAction::terminate, "q");
  DrawnMenu menu;
  menu.draw({item("Paused", std::nullopt), separator(), pending, quit});
  EXPECT_EQ(menu.shown().chosen, (std::vector{pending, quit}));
  const auto actions = menu.actions();
  ASSERT_EQ(actions.size(), 4);
  EXPECT_FALSE(actions[0]->isEnabled());
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_EQ(actions[2]->text(), QStringLiteral("Log: Lena"));
  EXPECT_TRUE(actions[2]->shortcut().isEmpty());
  EXPECT_EQ(actions[3]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST(MenuRenderer, SurvivesBeingRedrawnByTheItemThatIsChosen) {
  QMenu drawing;
  std::string title;
  drawMenu(drawing, {item("first")}, MenuReader::qt, [&](const MenuItem& got) {
    drawMenu(drawing, {item("second")}, MenuReader::qt, [](const MenuItem&) {});
    title = got.title;
  });
  drawing.actions()[0]->trigger();
  EXPECT_EQ(title, "first");
  EXPECT_EQ(drawing.actions()[0]->text(), QStringLiteral("second"));
}

Menu randomMenu(std::mt19937& random) {
  const auto upTo = [&random](int most) {
    return std::uniform_int_distribution<int>(0, most)(random);
  };
  Menu menu;
  for (int count = upTo(12); count > 0; --count) {
    MenuItem line = item("Title " + std::to_string(upTo(2)), MenuAction::openPending);
    if (upTo(3) == 0) line.action.reset();
    if (upTo(3) == 0) line.key = "l";
    if (upTo(1) == 0) line.representedObject = std::to_string(upTo(2));
    menu.push_back(upTo(4) == 0 ? separator() : line);
  }
  return menu;
}

TEST(MenuRenderer, DrawnOverAnyOtherAMenuIsAsIfDrawnAfresh) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  DrawnMenu redrawn;
  for (int round = 0; round < 500; ++round) {
    const Menu menu = randomMenu(random);
    redrawn.draw(menu);
    DrawnMenu fresh;
    fresh.draw(menu);
    ASSERT_EQ(redrawn.shown(), fresh.shown()) << "round " << round;
  }
}

TEST(MenuRenderer, LeavesTheLinesThatStayWhichHandBackWhatTheyShowByThen) {
  DrawnMenu menu;
  menu.draw({item("first"), item("2 notes"), item("last")});
  const auto before = menu.actions();
  menu.draw({item("first"), item("1 note"), item("last")});
  EXPECT_EQ(menu.actions(), before);
  EXPECT_EQ(menu.shown().chosen.at(1).title, "1 note");
  menu.draw({item("first"), item("1 note"), item("new"), item("last")});
  EXPECT_EQ(menu.actions().first(2), before.first(2));
  EXPECT_EQ(menu.actions().last(), before.last());
}

/// Stands for what Qt exports: it signals every change of the menu that it watches.
class Exported : public QObject {
 public:
  explicit Exported(const DrawnMenu& menu) {
    menu.actions().first()->associatedObjects().first()->installEventFilter(this);
  }

  int signalsSent = 0;

 protected:
  bool eventFilter(QObject* /*menu*/, QEvent* event) override {
    const bool changes = event->type() == QEvent::ActionAdded ||
                         event->type() == QEvent::ActionChanged ||
                         event->type() == QEvent::ActionRemoved;
    if (changes && !signalsBlocked()) ++signalsSent;
    return false;
  }
};

TEST(MenuRenderer, LetsOneSignalOutForAllThatDiffers) {
  DrawnMenu menu;
  const Menu two = {item("a"), item("2 notes", std::nullopt), item("b"), item("c")};
  menu.draw(two);
  Exported exported(menu);
  menu.draw({item("a"), item("1 note", std::nullopt), item("b"), item("c")}, &exported);
  EXPECT_EQ(exported.signalsSent, 1) << "for a title";
  menu.draw({item("x"), separator(), item("b"), item("y"), item("z", MenuAction::togglePause, "p")},
            &exported);
  EXPECT_EQ(exported.signalsSent, 2) << "for many lines";
  menu.draw({item("b")}, &exported);
  EXPECT_EQ(exported.signalsSent, 3) << "for lines that go";
  menu.draw({item("b")}, &exported);
  EXPECT_EQ(exported.signalsSent, 3) << "for the same menu";
}

}  // namespace
}  // namespace notewick
