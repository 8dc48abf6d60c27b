#include "platform/linux/panels/window_hints.h"

#include <xcb/xcb.h>

#include <QWindow>
#include <algorithm>
#include <array>
#include <vector>

#include "platform/linux/x11/x11_display.h"
#include "platform/linux/x11/xcb_owned.h"

namespace notewick {
namespace {

constexpr std::uint32_t ALL_DESKTOPS = 0xFFFFFFFF;
constexpr std::uint32_t ADD_STATE = 1;
constexpr std::uint32_t FROM_APPLICATION = 1;
constexpr std::uint32_t FROM_PAGER = 2;
constexpr std::uint8_t SENT_BY_A_CLIENT = 0x80;

std::array<xcb_atom_t, 4> floatingStates(xcb_connection_t* to) {
  return {x11Atom(*to, "_NET_WM_STATE_ABOVE"), x11Atom(*to, "_NET_WM_STATE_STICKY"),
          x11Atom(*to, "_NET_WM_STATE_SKIP_TASKBAR"), x11Atom(*to, "_NET_WM_STATE_SKIP_PAGER")};
}

void tellRoot(xcb_connection_t* to, const QWindow& window, const char* message,
              const std::array<std::uint32_t, 5>& data) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = static_cast<xcb_window_t>(window.winId());
  event.type = x11Atom(*to, message);
  std::copy(data.begin(), data.end(), event.data.data32);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(to)).data->root;
  xcb_send_event(to, 0, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(to);
}

void setProperty(xcb_connection_t* to, const QWindow& window, const char* name, xcb_atom_t type,
                 std::uint32_t count, const void* values) {
  xcb_change_property(to, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                      x11Atom(*to, name), type, 32, count, values);
}

std::vector<std::uint32_t> property(xcb_connection_t* to, const QWindow& window, const char* name) {
  constexpr std::uint32_t MORE_THAN_ANY = 64;
  const auto asked =
      xcb_get_property(to, 0, static_cast<xcb_window_t>(window.winId()), x11Atom(*to, name),
                       XCB_GET_PROPERTY_TYPE_ANY, 0, MORE_THAN_ANY);
  const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(to, asked, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* const values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

/// Of the nine numbers of WM_HINTS (ICCCM 4.1.2.4) the first says which of the others count, and
/// the second whether the window takes the keyboard.
void setInputHint(xcb_connection_t* to, const QWindow& window, bool takes) {
  constexpr std::uint32_t INPUT_COUNTS = 1;
  auto hints = property(to, window, "WM_HINTS");
  hints.resize(9);
  hints[0] |= INPUT_COUNTS;
  hints[1] = takes ? 1 : 0;
  setProperty(to, window, "WM_HINTS", XCB_ATOM_WM_HINTS, 9, hints.data());
}

void setTakeFocusProtocol(xcb_connection_t* to, const QWindow& window, bool takes) {
  const xcb_atom_t takeFocus = x11Atom(*to, "WM_TAKE_FOCUS");
  auto protocols = property(to, window, "WM_PROTOCOLS");
  std::erase(protocols, takeFocus);
  if (takes) protocols.push_back(takeFocus);
  setProperty(to, window, "WM_PROTOCOLS", XCB_ATOM_ATOM,
              static_cast<std::uint32_t>(protocols.size()), protocols.data());
}

}  // namespace

void setFloatingHints(const QWindow& window) {
  xcb_connection_t* const to = x11Display();
  if (to == nullptr) return;
  const auto states = floatingStates(to);
  setProperty(to, window, "_NET_WM_STATE", XCB_ATOM_ATOM, states.size(), states.data());
  setProperty(to, window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, 1, &ALL_DESKTOPS);
}

void requestFloatingState(const QWindow& window) {
  xcb_connection_t* const to = x11Display();
  if (to == nullptr) return;
  const auto [above, sticky, skipTaskBar, skipPager] = floatingStates(to);
  tellRoot(to, window, "_NET_WM_STATE", {ADD_STATE, above, sticky, FROM_APPLICATION, 0});
  tellRoot(to, window, "_NET_WM_STATE", {ADD_STATE, skipTaskBar, skipPager, FROM_APPLICATION, 0});
  tellRoot(to, window, "_NET_WM_DESKTOP", {ALL_DESKTOPS, FROM_APPLICATION, 0, 0, 0});
}

void standAlone(const QWindow& window) {
  xcb_connection_t* const to = x11Display();
  if (to == nullptr) return;
  xcb_delete_property(to, static_cast<xcb_window_t>(window.winId()), XCB_ATOM_WM_TRANSIENT_FOR);
  xcb_flush(to);
}

void setTakesKeyboard(const QWindow& window, bool takes) {
  xcb_connection_t* const to = x11Display();
  if (to == nullptr) return;
  setInputHint(to, window, takes);
  setTakeFocusProtocol(to, window, takes);
  xcb_flush(to);
}

void requestActivation(const QWindow& window) {
  xcb_connection_t* const to = x11Display();
  if (to == nullptr) return;
  tellRoot(to, window, "_NET_ACTIVE_WINDOW", {FROM_PAGER, XCB_CURRENT_TIME, 0, 0, 0});
}

bool tellsOfFrame(const QByteArray& eventType, const void* event) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto& any = *static_cast<const xcb_generic_event_t*>(event);
  if ((any.response_type & ~SENT_BY_A_CLIENT) != XCB_PROPERTY_NOTIFY) return false;
  static const xcb_atom_t frame = x11Atom(*x11Display(), "_NET_FRAME_EXTENTS");
  return static_cast<const xcb_property_notify_event_t*>(event)->atom == frame;
}

}  // namespace notewick
