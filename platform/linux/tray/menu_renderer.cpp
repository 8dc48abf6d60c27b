#include "platform/linux/tray/menu_renderer.h"

#include <QAction>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QKeySequence>
#include <QSignalBlocker>

#include "platform/linux/controls/panel_look.h"
#include "platform/linux/tray/menu_steps.h"

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

/// One drawn line, and the item that it shows. It is complete before a menu gets it, because every
/// later change is sent to the tray's host.
class DrawnItem : public QAction {
 public:
  DrawnItem(const MenuItem& item, MenuReader reader, const MenuItemChosen& chosen, QMenu& menu)
      : QAction(&menu), item_(item) {
    setSeparator(item.separator);
    if (item.separator) return;
    setText(menuText(item.title, reader));
    setEnabled(item.enabled());
    setShortcutContext(Qt::WidgetShortcut);
    setShortcut(shortcutOf(item));
    connect(this, &QAction::triggered, &menu, [this, chosen] { chosen(MenuItem(item_)); });
  }

  [[nodiscard]] const MenuItem& item() const { return item_; }

  void retitle(const std::string& title, MenuReader reader) {
    item_.title = title;
    setText(menuText(title, reader));
  }

 private:
  MenuItem item_;
};

Menu menuIn(const QMenu& drawing) {
  Menu menu;
  for (const QAction* const action : drawing.actions()) {
    menu.push_back(static_cast<const DrawnItem*>(action)->item());
  }
  return menu;
}

}  // namespace

QString menuText(const std::string& title, MenuReader reader) {
  return reader == MenuReader::qt ? buttonText(title) : forTrayHost(fromUtf8(title));
}

void drawMenu(QMenu& drawing, const Menu& menu, MenuReader reader, const MenuItemChosen& chosen,
              QObject* exported) {
  const std::vector<MenuStep> steps = stepsBetween(menuIn(drawing), menu);
  QSignalBlocker quiet(exported);
  for (std::size_t done = 0; done < steps.size(); ++done) {
    if (done + 1 == steps.size()) quiet.unblock();
    const auto [kind, place] = steps[done];
    QAction* const there = drawing.actions().value(static_cast<qsizetype>(place));
    switch (kind) {
      case MenuStep::Kind::retitle:
        static_cast<DrawnItem*>(there)->retitle(menu[place].title, reader);
        break;
      case MenuStep::Kind::remove:
        delete there;
        break;
      case MenuStep::Kind::insert:
        drawing.insertAction(there, new DrawnItem(menu[place], reader, chosen, drawing));
        break;
    }
  }
}

QObject* exportedTrayMenu() {
  const auto connection =
      QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
  return QDBusConnection(connection).objectRegisteredAt(QStringLiteral("/MenuBar"));
}

}  // namespace notewick
