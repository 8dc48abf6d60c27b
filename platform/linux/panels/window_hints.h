#pragma once

#include <QByteArray>

class QWindow;

namespace notewick {

// What a floating panel asks of the window manager beyond what Qt asks, by the Extended
// Window Manager Hints. All of it does nothing where the window is not an X11 window.

/// Sets the hints of a window that is about to be mapped: on all desktops, above the others, not in
/// the task bar, not in the pager. A window manager reads them when it takes the window over.
void setFloatingHints(const QWindow& window);

/// Asks for the same of a mapped window: a window manager clears the hints of a window that is
/// withdrawn, perhaps only after the window has been given them for the next time.
void requestFloatingState(const QWindow& window);

/// Cuts a mapped window loose from the program's others. Qt ties every tool window to
/// them, and KWin hides such a window while one of them is open and another program has the
/// keyboard.
void standAlone(const QWindow& window);

/// Whether the window takes the keyboard that it is given. To one that is mapped while it does not,
/// a Wayland compositor that gives the keyboard to every new window gives none; the X11 way of
/// saying so, a time of last input, is unknown there.
void setTakesKeyboard(const QWindow& window, bool takes);

/// Asks that the window gets the keyboard. Speaks as a pager does, because the user's click went to
/// the tray, and window managers refuse applications whose own windows saw no recent input.
void requestActivation(const QWindow& window);

/// Whether a native event of a window, as Qt hands it over, says that the window manager has given
/// the window another frame (_NET_FRAME_EXTENTS). Qt reads the new frame from then on, but tells
/// nobody.
[[nodiscard]] bool tellsOfFrame(const QByteArray& eventType, const void* event);

}  // namespace notewick
