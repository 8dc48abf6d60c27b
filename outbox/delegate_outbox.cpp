#include <algorithm>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "client/velk_client.h"
#include "detect/stamps.h"
#include "detect/watch_log.h"
#include "model/integers.h"
#include "model/local_store.h"
#include "platform/ports.h"

namespace notewick {
namespace {

/// Seconds that a save of the outbox may wait. A process that is killed meanwhile sends a note
/// again that the service has, or has lost count of an attempt.
constexpr double SUCCESS_WAITS = 0.02;
constexpr double FAILED_ATTEMPT_WAITS = 1.0;

void logCapture(const OutboxItem& item) {
  appendLine(timeStamp() + " · " + item.participantName + " · " + std::to_string(item.minutes) +
                 " min · " + item.sessionDate + " · " + item.input,
             SUPPORT_DIR + "/captures-" + dayStamp() + ".log");
}

}  // namespace

void AppDelegate::enqueueNote(const Participant& participant, const std::string& what,
                              std::int64_t minutes, const std::string& sessionDate) {
  outbox.push_back(
      {ports().uuids.next(), participant.id, participant.name(), what, minutes, sessionDate});
  outboxSave_.now();
  logCapture(outbox.back());
  showChange();
  flushOutbox();
}

void AppDelegate::flushOutbox() {
  const std::vector<OutboxItem> waiting = outbox;
  for (const OutboxItem& item : waiting) {
    if (!sendingIds.contains(item.id)) startUpload(item);
  }
}

void AppDelegate::retryOutbox() {
  askToUnlockIfLocked();
  flushOutbox();
}

void AppDelegate::startUpload(const OutboxItem& item) {
  sendingIds.insert(item.id);
  VELKClient::shared().captureNote(
      item.participantId, item.input, item.minutes, item.sessionDate,
      [weakSelf = weak_from_this(), item](const Result<std::optional<std::string>>& result) {
        if (const auto self = weakSelf.lock()) self->uploadFinished(item, result);
      });
}

void AppDelegate::uploadFinished(const OutboxItem& item,
                                 const Result<std::optional<std::string>>& result) {
  sendingIds.erase(item.id);
  if (!result) return uploadFailed(item, result.error());
  removeFromOutbox(item.id);
  outboxSave_.within(SUCCESS_WAITS);
  showChange();
  announce("Captured — " + item.participantName,
           "Parked in VELK (" + std::to_string(item.minutes) +
               " min). Write it up from your case-notes page when you're ready.",
           &AppDelegate::openCaseNotes);
}

void AppDelegate::uploadFailed(const OutboxItem& item, const VELKError& error) {
  countAttempt(item.id, error);
  if (!error.isRetryable()) {
    handleApiFailure(error, "Note for " + item.participantName + " failed");
  }
  if (error.isRefusal()) {
    removeFromOutbox(item.id);
    outboxSave_.now();
  }
  showChange();
}

void AppDelegate::countAttempt(const std::string& id, const VELKError& error) {
  const auto entry = std::find_if(outbox.begin(), outbox.end(),
                                  [&](const OutboxItem& item) { return item.id == id; });
  if (entry == outbox.end()) return;
  entry->attempts = saturatingSum(entry->attempts, 1);
  entry->lastError = error.message();
  if (error.isRefusal()) return outboxSave_.now();
  outboxSave_.within(FAILED_ATTEMPT_WAITS);
}

void AppDelegate::removeFromOutbox(const std::string& id) {
  std::erase_if(outbox, [&](const OutboxItem& item) { return item.id == id; });
}

void AppDelegate::saveOutbox() {
  saveJSON(ports().files, outboxFile(), outbox);
}

}  // namespace notewick
