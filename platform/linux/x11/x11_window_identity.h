#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notewick {

/// What a window's properties say about the program that it belongs to.
struct X11WindowIdentity {
  std::uint32_t client = 0;  ///< the X connection that made the window: its id without the client's
                             ///< own part (X protocol, resource-id-mask)
  std::optional<std::uint32_t> pid;     ///< _NET_WM_PID
  std::string machine;                  ///< WM_CLIENT_MACHINE; a pid means nothing without it
  std::string wmClass;                  ///< WM_CLASS: instance, NUL, class, NUL
  std::optional<std::uint32_t> leader;  ///< WM_CLIENT_LEADER
};

/// Whether two windows belong to the same running program. By process and machine; because
/// sandboxed programs count their processes from one, equal numbers must also share the connection
/// or the class. Windows that name no process belong together by connection, by client leader, or,
/// when they have none, by class.
[[nodiscard]] bool isSameApplication(const X11WindowIdentity& one, const X11WindowIdentity& other);

/// The class part of WM_CLASS, which names the program ("XTerm"); the instance part may hold
/// private paths. Empty when there is none.
[[nodiscard]] std::string_view classPart(std::string_view wmClass);

}  // namespace notewick
