#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/titles/deadline.h"
#include "platform/linux/x11/x11_property.h"

struct xcb_connection_t;

namespace notewick {

struct X11PropertyQuery {
  std::uint32_t window = 0;
  X11Atom property{};
};

/// A connection of its own to the X server, for reading properties only. It selects no events and
/// survives windows that vanish between two reads. Main thread.
class X11Connection {
 public:
  /// Connects to the server that DISPLAY names; null when there is none.
  [[nodiscard]] static std::unique_ptr<X11Connection> open();

  /// Reads all properties in one round trip and gives them in the order of the queries; a value is
  /// absent when its window is gone, the server is, or the deadline passed. At most 64 KiB of each.
  [[nodiscard]] std::vector<std::optional<X11Property>> read(
      const std::vector<X11PropertyQuery>& queries, const Deadline& deadline);

  /// The same without a limit of size: what is longer takes further round trips. A value that
  /// changes between two of them is absent.
  [[nodiscard]] std::vector<std::optional<X11Property>> readWhole(
      const std::vector<X11PropertyQuery>& queries, const Deadline& deadline);

  [[nodiscard]] std::uint32_t rootWindow() const { return rootWindow_; }

  /// The X client that made the window, as a number that its other windows share.
  [[nodiscard]] std::uint32_t clientOf(std::uint32_t window) const { return window & ~idMask_; }

 private:
  static constexpr std::size_t ATOM_COUNT = static_cast<std::size_t>(X11Atom::string) + 1;

  using Handle = std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)>;

  X11Connection(Handle handle, int screenNumber);

  [[nodiscard]] bool internAtoms();
  [[nodiscard]] unsigned int ask(const X11PropertyQuery& query, std::size_t offset,
                                 std::size_t size);
  [[nodiscard]] std::optional<X11Property> readOn(const X11PropertyQuery& query, X11Property start,
                                                  const Deadline& deadline);
  void dropEvents();
  [[nodiscard]] std::optional<X11Property> awaitProperty(unsigned int request,
                                                         const Deadline& deadline);

  Handle handle_;
  std::uint32_t rootWindow_ = 0;
  std::uint32_t idMask_ = 0;
  std::array<std::uint32_t, ATOM_COUNT> atoms_{};
};

}  // namespace notewick
