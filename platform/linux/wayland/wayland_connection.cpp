#include "platform/linux/wayland/wayland_connection.h"

#include <poll.h>
#include <wayland-client.h>

#include <cstdlib>
#include <string_view>
#include <utility>

namespace notewick {

std::unique_ptr<WaylandConnection> WaylandConnection::open() {
  const char* name = std::getenv("WAYLAND_DISPLAY");
  if (name == nullptr || std::string_view(name).empty()) return nullptr;
  Display display(wl_display_connect(name), wl_display_disconnect);
  if (!display) return nullptr;
  return std::unique_ptr<WaylandConnection>(new WaylandConnection(std::move(display)));
}

WaylandConnection::WaylandConnection(Display display) : display_(std::move(display)) {}

bool WaylandConnection::dispatch(const Deadline& deadline) {
  auto reading = Reading::something;
  while (reading == Reading::something && !deadline.isOver()) {
    reading = readOnce(std::chrono::milliseconds::zero());
  }
  return reading != Reading::broken;
}

WaylandConnection::Reading WaylandConnection::readOnce(std::chrono::milliseconds longestWait) {
  while (wl_display_prepare_read(display()) != 0) {
    if (wl_display_dispatch_pending(display()) < 0) return Reading::broken;
  }
  wl_display_flush(display());
  pollfd descriptor{wl_display_get_fd(display()), POLLIN, 0};
  if (poll(&descriptor, 1, static_cast<int>(longestWait.count())) <= 0) {
    wl_display_cancel_read(display());
    return Reading::nothing;
  }
  const bool isRead = wl_display_read_events(display()) == 0;
  return isRead && wl_display_dispatch_pending(display()) >= 0 ? Reading::something
                                                               : Reading::broken;
}

bool WaylandConnection::roundTrip(const Deadline& deadline) {
  static constexpr wl_callback_listener LISTENER{
      [](void* isDone, wl_callback*, std::uint32_t) { *static_cast<bool*>(isDone) = true; }};
  bool isDone = false;
  const std::unique_ptr<wl_callback, void (*)(wl_callback*)> callback(wl_display_sync(display()),
                                                                      wl_callback_destroy);
  wl_callback_add_listener(callback.get(), &LISTENER, &isDone);
  while (!isDone && !deadline.isOver()) {
    if (readOnce(deadline.remaining()) == Reading::broken) return false;
  }
  return isDone;
}

}  // namespace notewick
