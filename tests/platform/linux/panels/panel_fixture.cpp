#include "tests/platform/linux/panels/panel_fixture.h"

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

QLabel& shownLabel(const QWidget& window, const std::string& text) {
  for (QLabel* const label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && label->text().toStdString() == text) return *label;
  }
  throw std::runtime_error("no label says " + text);
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
