#pragma once

namespace notewick {

// How the desktop knows this program (packaging/linux/tools.velk.notewick.desktop).

/// The name that the user knows it by, in each kind of session and whether or not its desktop entry
/// is installed. It is no application display name of Qt's, because Qt would add that to the title
/// of every window.
inline constexpr const char* OWN_NAME = "VELK Notewick";

/// What its windows call themselves: the class part of WM_CLASS.
inline constexpr const char* OWN_WINDOW_CLASS = "notewick";

/// The name of its desktop entry; what its windows call themselves on Wayland.
inline constexpr const char* OWN_DESKTOP_ENTRY = "tools.velk.notewick";

}  // namespace notewick
