#include "platform/linux/menu_renderer.h"

#include <QAction>
#include <QKeySequence>

#include "platform/linux/panel_look.h"

namespace notewick {
namespace {

QString forTrayHost(QString title) {
  title.replace(QLatin1Char('_'), QLatin1String("__"));
  const auto first = title.indexOf(QLatin1Char('&'));
  if (first >= 0 && first + 1 < title.size()) title.insert(first, QLatin1Char('&'));
  return title;
}

QKeySequence shortcutOf(const MenuItem& item) {
  return item.key.empty() ? QKeySequence()
                          : QKeySequence(QLatin1String("Ctrl+") + fromUtf8(item.key).toUpper());
}

}  // namespace

QString menuText(const std::string& title, MenuReader reader) {
  return reader == MenuReader::toolkit ? buttonText(title) : forTrayHost(fromUtf8(title));
}

void drawMenu(QMenu& drawing, const Menu& menu, MenuReader reader, const MenuItemChosen& chosen) {
  drawing.clear();
  for (const MenuItem& item : menu) {
    if (item.separator) {
      drawing.addSeparator();
      continue;
    }
    QAction* const action = drawing.addAction(menuText(item.title, reader));
    action->setEnabled(item.enabled());
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setShortcut(shortcutOf(item));
    QObject::connect(action, &QAction::triggered, &drawing, [item, chosen] { chosen(item); });
  }
}

}  // namespace notewick
