#include "platform/linux/x11/x11_display.h"

#include <QGuiApplication>
#include <cstring>

#include "platform/linux/x11/xcb_owned.h"

namespace notewick {

xcb_connection_t* x11Display() {
  const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(xcb_connection_t& display, const char* name) {
  const auto request =
      xcb_intern_atom(&display, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(&display, request, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace notewick
