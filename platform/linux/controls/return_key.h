#pragma once

#include <QKeyEvent>

namespace notewick {

/// Whether it is the Return key, or Enter on the number pad.
[[nodiscard]] inline bool isReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace notewick
