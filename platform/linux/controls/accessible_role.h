#pragma once

#include <QAccessible>

class QWidget;

namespace notewick {

/// Makes a plain widget or label appear to screen readers in this role, where the toolkit would
/// give it one that says nothing. To be called before anyone asked for the widget's role.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace notewick
