#pragma once

#include <QAccessible>
#include <memory>

namespace notewick {

/// The event to send to screen readers in place of this one; null where this one may be sent. For a
/// field that hides what is typed it holds a bullet for each character.
[[nodiscard]] std::unique_ptr<QAccessibleEvent> masked(QAccessibleEvent& event);

/// From now on, every event that this program sends to screen readers is masked. Qt 6.4 sends the
/// characters themselves, also for password fields: Orca would speak the password aloud, and every
/// program on the accessibility bus could read it.
void maskTyping();

}  // namespace notewick
