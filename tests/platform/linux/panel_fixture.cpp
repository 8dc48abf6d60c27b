#include "tests/platform/linux/panel_fixture.h"

#include <QLabel>
#include <QWindow>
#include <algorithm>

namespace notewick {

std::vector<std::string> visibleLabels(const QWidget& window) {
  auto labels = window.findChildren<QLabel*>();
  labels.removeIf([](const QLabel* label) { return !label->isVisible(); });
  const auto top = [&window](const QLabel* label) { return label->mapTo(&window, QPoint()).y(); };
  std::stable_sort(labels.begin(), labels.end(),
                   [&top](const auto* one, const auto* other) { return top(one) < top(other); });
  std::vector<std::string> texts;
  for (const QLabel* label : labels) texts.push_back(label->text().toStdString());
  return texts;
}

void activate(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

void closeByUser(QWidget& window) {
  window.windowHandle()->close();
}

std::vector<std::string> tabOrder() {
  std::vector<std::string> names;
  const QWidget* const first = QApplication::focusWidget();
  do {
    names.push_back(QApplication::focusWidget()->accessibleName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  } while (QApplication::focusWidget() != first && names.size() < 50);
  return names;
}

}  // namespace notewick
