#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <string>
#include <vector>

#include "platform/quick_note_panel.h"

namespace notewick {

/// What the delegate of a panel was told, in order.
using Log = std::vector<std::string>;

/// The one control of this kind in the window with this accessible name; fails without one.
template <class Control>
Control& control(QWidget& window, const std::string& accessibleName) {
  for (Control* const candidate : window.findChildren<Control*>()) {
    if (candidate->accessibleName().toStdString() == accessibleName) return *candidate;
  }
  throw std::runtime_error("no control is called " + accessibleName);
}

inline CaughtRow row(const std::string& name) {
  return {name, "Log " + name, "Skip " + name};
}

/// The accessible name of the control that has the keyboard.
inline std::string focused() {
  const QWidget* const widget = QApplication::focusWidget();
  return widget != nullptr ? widget->accessibleName().toStdString() : "nothing";
}

/// The visible texts of labels, top to bottom.
inline std::vector<std::string> visibleLabels(const QWidget& window) {
  auto labels = window.findChildren<QLabel*>();
  labels.removeIf([](const QLabel* label) { return !label->isVisible(); });
  const auto top = [&window](const QLabel* label) { return label->mapTo(&window, QPoint()).y(); };
  std::stable_sort(labels.begin(), labels.end(),
                   [&top](const auto* one, const auto* other) { return top(one) < top(other); });
  std::vector<std::string> texts;
  for (const QLabel* label : labels) texts.push_back(label->text().toStdString());
  return texts;
}

/// The visible label with this text; fails without one.
inline QLabel& shownLabel(const QWidget& window, const std::string& text) {
  for (QLabel* const label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && label->text().toStdString() == text) return *label;
  }
  throw std::runtime_error("no label says " + text);
}

/// Shows the window and gives it the keyboard.
inline void activate(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// Takes what the user does to close a window.
inline void closeByUser(QWidget& window) {
  window.windowHandle()->close();
}

/// Every control that the keyboard reaches from here with Tab, in order, by accessible name.
inline std::vector<std::string> tabOrder() {
  std::vector<std::string> names;
  const QWidget* const first = QApplication::focusWidget();
  do {
    names.push_back(QApplication::focusWidget()->accessibleName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  } while (QApplication::focusWidget() != first && names.size() < 50);
  return names;
}

}  // namespace notewick
