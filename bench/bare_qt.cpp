// Small Qt programs to measure beside.
//   bare_qt tray             an icon in the tray with a menu of one entry
//   bare_qt windows N TITLE  so many windows, called "TITLE 1", "TITLE 2" and so on

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <memory>
#include <vector>

namespace {

int showIcon() {
  QPixmap square(22, 22);
  square.fill(Qt::darkGray);
  QMenu menu;
  menu.addAction(QStringLiteral("Quit"), &QApplication::quit);
  QSystemTrayIcon icon{QIcon(square)};
  icon.setContextMenu(&menu);
  icon.setToolTip(QStringLiteral("a bare icon"));
  icon.show();
  return QApplication::exec();
}

int showWindows(int count, const QString& title) {
  std::vector<std::unique_ptr<QLabel>> windows;
  for (int number = 1; number <= count; ++number) {
    windows.push_back(std::make_unique<QLabel>(QStringLiteral("a window")));
    windows.back()->setWindowTitle(title + QStringLiteral(" %1").arg(number));
    windows.back()->show();
  }
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  QApplication::setQuitOnLastWindowClosed(false);
  if (arguments.value(1) == QLatin1String("tray")) return showIcon();
  return showWindows(arguments.value(2).toInt(), arguments.value(3));
}
