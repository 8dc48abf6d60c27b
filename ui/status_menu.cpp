#include "ui/status_menu.h"

#include "model/drawn_text.h"
#include "platform/fatal_error.h"

namespace notewick {
namespace {

MenuItem disabled(std::string title) {
  return {.title = std::move(title)};
}

MenuItem command(std::string title, MenuAction action, std::string key = "") {
  return {.title = std::move(title), .action = action, .key = std::move(key)};
}

MenuItem separator() {
  return {.separator = true};
}

MenuItem watchingItem(const MenuState& state) {
  if (!state.trusted) {
    return command("⚠️ Can't see your screen yet — click to fix",
                   MenuAction::openAccessibilitySettings);
  }
  if (state.paused) return disabled("Paused");
  return disabled("Watching · " + std::to_string(state.participantCount) + " participants");
}

void addAccount(const MenuState& state, Menu& menu) {
  if (!state.signedIn) {
    menu.push_back(command("Sign in to VELK…", MenuAction::menuSignIn));
    return;
  }
  menu.push_back(
      disabled("Signed in as " + drawnWithin(state.userEmail.value_or("your VELK account"))));
  menu.push_back(watchingItem(state));
}

void addPendings(const MenuState& state, Menu& menu) {
  if (state.pendings.empty()) menu.push_back(disabled("No unlogged work spotted"));
  for (const Pending& pending : state.pendings) {
    MenuItem item = command("Log: " + drawnWithin(pending.participant) + " (~" +
                                std::to_string(pending.observedMinutes) + " min, " +
                                drawnWithin(pending.day) + ")",
                            MenuAction::openPending);
    item.representedObject = pending.id;
    menu.push_back(std::move(item));
  }
}

void addOutbox(const MenuState& state, Menu& menu) {
  if (state.outboxCount == 0) return;
  menu.push_back(separator());
  menu.push_back(disabled(state.outboxCount == 1 ? "1 note waiting to send to VELK"
                                                 : std::to_string(state.outboxCount) +
                                                       " notes waiting to send to VELK"));
  menu.push_back(command("Retry now", MenuAction::retryOutbox));
}

void addWorkCommands(const MenuState& state, Menu& menu) {
  menu.push_back(command("Log work now (call, visit…)", MenuAction::logNow, "l"));
  menu.push_back(command(state.widgetVisible ? "Hide floating widget" : "Show floating widget",
                         MenuAction::toggleWidget, "w"));
  menu.push_back(command("Open my case notes in VELK", MenuAction::openCaseNotes, "o"));
}

void addSettings(const MenuState& state, Menu& menu) {
  menu.push_back(
      command(state.paused ? "Resume watching" : "Pause watching", MenuAction::togglePause, "p"));
  menu.push_back(command("Reload participants", MenuAction::reloadParticipants));
  menu.push_back(command("Start at login", MenuAction::installLoginItem));
  if (state.signedIn) menu.push_back(command("Sign out of VELK", MenuAction::menuSignOut));
}

}  // namespace

Menu makeMenu(const MenuState& state) {
  Menu menu;
  addAccount(state, menu);
  menu.push_back(separator());
  addPendings(state, menu);
  addOutbox(state, menu);
  menu.push_back(separator());
  addWorkCommands(state, menu);
  menu.push_back(separator());
  addSettings(state, menu);
  menu.push_back(separator());
  menu.push_back(command("Quit VELK Notewick", MenuAction::terminate, "q"));
  return menu;
}

std::size_t waitingCount(std::size_t pendingCount, std::size_t outboxCount) {
  return checkedSum(pendingCount, outboxCount);
}

std::string statusTitle(std::size_t waiting) {
  return waiting > 0 ? " VELK (" + std::to_string(waiting) + ")" : " VELK";
}

}  // namespace notewick
