#include "platform/linux/menu_renderer.h"

#include <gtest/gtest.h>

#include <QAction>

namespace notewick {
namespace {

MenuItem item(const std::string& title, std::optional<MenuAction> action = MenuAction::logNow,
              const std::string& key = "") {
  return {title, action, key, std::nullopt, false};
}

MenuItem separator() {
  return {"", std::nullopt, "", std::nullopt, true};
}

void ignore(const MenuItem& /*item*/) {}

/// What is shown for a label of com.canonical.dbusmenu, as the toolkit sends it: it makes an access
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

std::string shownByToolkit(QString label) {
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
    EXPECT_EQ(shownByToolkit(menuText(title, MenuReader::toolkit)), title);
  }
}

TEST(MenuRenderer, DrawsItemsAndSeparatorsInOrder) {
  QMenu drawing;
  drawMenu(drawing, {item("one"), separator(), item("two", std::nullopt)}, MenuReader::toolkit,
           ignore);
  ASSERT_EQ(drawing.actions().size(), 3);
  EXPECT_EQ(drawing.actions()[0]->text(), QStringLiteral("one"));
  EXPECT_TRUE(drawing.actions()[0]->isEnabled());
  EXPECT_TRUE(drawing.actions()[1]->isSeparator());
  EXPECT_FALSE(drawing.actions()[2]->isEnabled());
}

TEST(MenuRenderer, ReplacesWhatWasDrawn) {
  QMenu drawing;
  drawMenu(drawing, {item("old"), item("older")}, MenuReader::toolkit, ignore);
  drawMenu(drawing, {item("new")}, MenuReader::toolkit, ignore);
  ASSERT_EQ(drawing.actions().size(), 1);
  EXPECT_EQ(drawing.actions()[0]->text(), QStringLiteral("new"));
}

TEST(MenuRenderer, ShowsShortcutsWithControl) {
  QMenu drawing;
  drawMenu(drawing, {item("log", MenuAction::logNow, "l"), item("reload")}, MenuReader::toolkit,
           ignore);
  EXPECT_EQ(drawing.actions()[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_L));
  EXPECT_TRUE(drawing.actions()[1]->shortcut().isEmpty());
}

TEST(MenuRenderer, HandsBackTheWholeItem) {
  QMenu drawing;
  MenuItem pending = item("Log: Lena", MenuAction::openPending);
  pending.representedObject = "id 7";
  std::vector<MenuItem> chosen;
  drawMenu(drawing, {item("other"), pending}, MenuReader::toolkit,
           [&chosen](const MenuItem& got) { chosen.push_back(got); });
  drawing.actions()[1]->trigger();
  EXPECT_EQ(chosen, std::vector{pending});
}

TEST(MenuRenderer, SurvivesBeingRedrawnByTheItemThatIsChosen) {
  QMenu drawing;
  std::string title;
  drawMenu(drawing, {item("first")}, MenuReader::toolkit, [&](const MenuItem& got) {
    drawMenu(drawing, {item("second")}, MenuReader::toolkit, ignore);
    title = got.title;
  });
  drawing.actions()[0]->trigger();
  EXPECT_EQ(title, "first");
  EXPECT_EQ(drawing.actions()[0]->text(), QStringLiteral("second"));
}

}  // namespace
}  // namespace notewick
