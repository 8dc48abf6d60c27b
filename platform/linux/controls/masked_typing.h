#pragma once

#include <QAccessible>
#include <memory>

namespace notewick {

/// The event that screen readers may be told instead of this one; null where they may be told this
/// one. Of a field that hides what is typed, the events tell a bullet for each character.
[[nodiscard]] std::unique_ptr<QAccessibleEvent> masked(QAccessibleEvent& event);

/// From now on, all that this program tells screen readers is masked. Qt 6.4 tells of the
/// characters themselves, also in password fields: Orca would speak the password aloud, and every
/// program on the accessibility bus could read it.
void maskTyping();

}  // namespace notewick
