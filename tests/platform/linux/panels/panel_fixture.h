#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <string>
#include <vector>

class QLabel;

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

/// The visible texts of labels, top to bottom.
std::vector<std::string> visibleLabels(const QWidget& window);

/// The visible label with this text; fails without one.
QLabel& shownLabel(const QWidget& window, const std::string& text);

/// Shows the window and gives it the keyboard.
void activate(QWidget& window);

/// Takes what the user does to close a window.
void closeByUser(QWidget& window);

/// Every control that the keyboard reaches from here with Tab, in order, by accessible name.
std::vector<std::string> tabOrder();

}  // namespace notewick
