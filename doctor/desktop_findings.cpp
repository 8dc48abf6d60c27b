#include "doctor/desktop_findings.h"

namespace notewick {
namespace {

constexpr const char* SIGN_IN = ". Choose “Sign in to VELK…” in Notewick's menu.";

std::string orUnknown(const std::string& text) {
  return text.empty() ? "unknown" : text;
}

}  // namespace

Finding aboutVersions(const Versions& versions) {
  return fine("Notewick " + versions.program + ", " + versions.qt + ", " + versions.transport +
              ", distribution " + orUnknown(versions.distribution));
}

Finding aboutSession(const SessionFacts& session) {
  if (!session.hasDisplay) {
    return toDo("no display. Run notewick-doctor in a terminal on the desktop.");
  }
  return fine("type " + orUnknown(session.type) + ", desktop " + orUnknown(session.desktop));
}

Finding aboutTitles(const TitleFacts& titles) {
  if (!titles.hasDisplay) return toDo("cannot be read: no display.");
  if (!titles.isTrusted) {
    return toDo(
        "cannot be read by " + titles.reader +
        ". Choose “Can't see your screen yet — click to fix” in Notewick's menu, and log out "
        "and in once.");
  }
  if (titles.count == 0) {
    return toDo(
        "none seen by " + titles.reader +
        ". Click a window with a title, and run notewick-doctor again while it is in front.");
  }
  return fine(std::to_string(titles.count) + " seen by " + titles.reader);
}

Finding aboutTray(TrayKind tray) {
  switch (tray) {
    case TrayKind::notifierItems:
      return fine("takes status notifier items");
    case TrayKind::embeddedIcons:
      return fine("takes embedded icons");
    case TrayKind::none:
      break;
  }
  return toDo("none. Right-click the widget for the menu, or add a tray to the desktop's panel.");
}

Finding aboutSecretStore(const StoreFacts& store) {
  const std::string signIn = store.holdsSignIn ? ", holds a sign-in" : ", holds no sign-in";
  switch (store.state) {
    case StoreState::notRunning:
      return fine("present, starts when it is needed");
    case StoreState::silent:
      return toDo("does not answer. Log out and in.");
    case StoreState::locked:
      if (!store.holdsSignIn) return toDo("locked" + signIn + SIGN_IN);
      return toDo("locked" + signIn + ". Open it when Notewick asks for its password.");
    case StoreState::open:
      return store.holdsSignIn ? fine("open" + signIn) : toDo("open" + signIn + SIGN_IN);
    case StoreState::none:
      break;
  }
  return toDo("none: a sign-in lasts until Notewick quits. Install gnome-keyring to keep it.");
}

}  // namespace notewick
