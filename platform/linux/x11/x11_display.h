#pragma once

#include <xcb/xcb.h>

namespace notewick {

/// Qt's own connection to the X server, over which its windows are made; null where Qt
/// draws by other means.
[[nodiscard]] xcb_connection_t* x11Display();

/// The atom of this name, made when there is none; XCB_ATOM_NONE when the connection is lost.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t& display, const char* name);

}  // namespace notewick
