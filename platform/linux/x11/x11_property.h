#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/linux/x11/x11_window_identity.h"

namespace notewick {

/// The properties and property types that the reader of titles knows.
enum class X11Atom {
  netActiveWindow,
  netClientListStacking,
  netClientList,
  netSupportingWmCheck,
  netWmName,
  netWmPid,
  utf8String,
  compoundText,
  wmClientLeader,
  wmClientMachine,
  wmClass,
  wmName,
  string,
};

/// The value of a window's property as it came from the server. Any program may have written it:
/// any type, any size, any bytes.
struct X11Property {
  std::optional<X11Atom> type;  ///< absent for a type unknown here
  int bitsPerUnit = 0;          ///< 8, 16 or 32; 0 when the window has no such property
  std::string bytes;            ///< in the machine's own byte order
  std::size_t bytesLeft = 0;    ///< how many more the server holds behind these

  [[nodiscard]] bool exists() const { return bitsPerUnit != 0; }

  /// The value as 32-bit numbers; empty when it is something else.
  [[nodiscard]] std::vector<std::uint32_t> numbers() const;

  [[nodiscard]] std::optional<std::uint32_t> firstNumber() const;
};

/// The values of some properties of one window, absent where they could not be read.
using X11Properties = std::span<const std::optional<X11Property>>;

[[nodiscard]] bool isGone(X11Properties properties);

inline constexpr std::array TITLE_PROPERTIES = {X11Atom::netWmName, X11Atom::wmName};

/// The title in a window's TITLE_PROPERTIES: the first that is a text, "" when none is. Absent when
/// the window is gone. UTF-8 is passed on as it is, valid or not.
[[nodiscard]] std::optional<std::string> titleIn(X11Properties properties);

inline constexpr std::array IDENTITY_PROPERTIES = {X11Atom::netWmPid, X11Atom::wmClientMachine,
                                                   X11Atom::wmClass, X11Atom::wmClientLeader};

/// What a window's IDENTITY_PROPERTIES say, of the window that this X client made. Absent when the
/// window is gone.
[[nodiscard]] std::optional<X11WindowIdentity> identityIn(std::uint32_t client,
                                                          X11Properties properties);

}  // namespace notewick
