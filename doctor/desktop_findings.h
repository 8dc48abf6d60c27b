#pragma once

#include <cstddef>
#include <string>

#include "doctor/finding.h"

namespace notewick {

/// What the checks of the desktop say. Pure functions over what was seen.

struct Versions {
  std::string program;
  std::string qt;            ///< with its name
  std::string transport;     ///< with its name
  std::string distribution;  ///< with its name; empty when it does not say
};
[[nodiscard]] Finding aboutVersions(const Versions& versions);

struct SessionFacts {
  std::string type;     ///< "x11", "wayland"; empty when the session does not say
  std::string desktop;  ///< "GNOME", "KDE"; empty when it does not say
  bool hasDisplay;      ///< a display is named
};
[[nodiscard]] Finding aboutSession(const SessionFacts& session);

struct TitleFacts {
  bool hasDisplay;
  std::string reader = {};  ///< what reads the titles
  bool isTrusted = false;
  std::size_t count = 0;  ///< titles of the frontmost application that it saw
};
[[nodiscard]] Finding aboutTitles(const TitleFacts& titles);

enum class TrayKind { none, notifierItems, embeddedIcons };
[[nodiscard]] Finding aboutTray(TrayKind tray);

enum class StoreState {
  none,
  notRunning,  ///< not running, and started when it is needed
  silent,      ///< does not answer
  locked,
  open,
};
struct StoreFacts {
  StoreState state;
  bool holdsSignIn;  ///< our item is there, in reach or not
};
[[nodiscard]] Finding aboutSecretStore(const StoreFacts& store);

}  // namespace notewick
