#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "platform/fatal_error.h"
#include "platform/ports.h"
#include "ui/status_menu.h"

namespace notewick {

void AppDelegate::rebuildMenu() {
  if (!statusItem) fatalError("the menu was built before its status item");
  MenuState state;
  state.signedIn = VELKClient::shared().isSignedIn();
  if (state.signedIn) {
    state.userEmail = VELKClient::shared().userEmail();
    state.trusted = ports().accessibility.isTrusted();
  }
  state.paused = paused;
  state.widgetVisible = widgetVisible();
  state.participantCount = participants.size();
  state.pendings = pendings;
  state.outboxCount = outbox.size();
  statusItem->setMenu(makeMenu(state));
  const std::size_t waiting = waitingCount(pendings.size(), outbox.size());
  statusItem->setTitle(statusTitle(waiting), waiting);
}

void AppDelegate::menuItemChosen(const MenuItem& item) {
  if (!item.action) return;
  switch (*item.action) {
    case MenuAction::openAccessibilitySettings:
      return openAccessibilitySettings();
    case MenuAction::menuSignIn:
      return menuSignIn();
    case MenuAction::openPending:
      return openPending(item);
    case MenuAction::retryOutbox:
      return retryOutbox();
    case MenuAction::logNow:
      return logNow();
    case MenuAction::toggleWidget:
      return toggleWidget();
    case MenuAction::openCaseNotes:
      return openCaseNotes();
    case MenuAction::togglePause:
      return togglePause();
    case MenuAction::reloadParticipants:
      return reloadParticipants();
    case MenuAction::installLoginItem:
      return installLoginItem();
    case MenuAction::menuSignOut:
      return menuSignOut();
    case MenuAction::terminate:
      return;
  }
}

void AppDelegate::togglePause() {
  paused = !paused;
  if (paused) sessions.clear();
  rebuildMenu();
}

void AppDelegate::reloadParticipants() {
  askToUnlockIfLocked();
  refreshParticipants(false);
  flushOutbox();
}

}  // namespace notewick
