#include "app/app_delegate.h"

#include "app/constants.h"
#include "client/velk_client.h"
#include "detect/watch_log.h"
#include "model/local_store.h"
#include "platform/ports.h"

namespace notewick {
namespace {

const StatusItemAppearance APPEARANCE = {"note.text.badge.plus", "VELK Notewick", " VELK"};

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
  ensureDirs();
  loadRecords();
  statusItem = ports().views.makeStatusItem(APPEARANCE, weak_from_this());
  rebuildMenu();
  ports().accessibility.isTrustedWithPrompt();
  startTimers();
  followUnlocking();
  VELKClient& client = VELKClient::shared();
  if (!client.isSignedIn()) {
    showLogin();
  } else if (client.keychain().isLocked()) {
    askToUnlock();
  } else {
    resumeSignIn();
  }
}

void AppDelegate::loadRecords() {
  Files& files = ports().files;
  loadJSON(files, pendingFile(), pendings);
  loadJSON(files, outboxFile(), outbox);
  std::vector<Participant> cached;
  loadJSON(files, participantsCache(), cached);
  setParticipants(std::move(cached));
}

void AppDelegate::startTimers() {
  MainLoop& loop = ports().mainLoop;
  timer = loop.startRepeating(SAMPLE_INTERVAL, [weakSelf = weak_from_this()] {
    if (const auto self = weakSelf.lock()) self->tick();
  });
  outboxTimer = loop.startRepeating(OUTBOX_RETRY_INTERVAL, [weakSelf = weak_from_this()] {
    if (const auto self = weakSelf.lock()) self->flushOutbox();
  });
}

}  // namespace notewick
