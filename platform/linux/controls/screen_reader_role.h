#pragma once

#include <QAccessible>

class QWidget;

namespace notewick {

/// Shows a plain widget or label to screen readers in this role; Qt would give it one that says
/// nothing. Has no effect once a screen reader has asked for the widget.
void setScreenReaderRole(QWidget& widget, QAccessible::Role role);

}  // namespace notewick
