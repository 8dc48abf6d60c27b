#include "app/app_delegate.h"
#include "detect/notification.h"
#include "detect/pending_list.h"
#include "detect/stamps.h"
#include "model/local_store.h"
#include "platform/ports.h"

namespace notewick {

void AppDelegate::addPending(const WorkSession& session) {
  promote(session, dayStamp(), pendings);
  pendingsChanged();
  notify("Log it? — " + session.participant,
         "Looks like you worked on " + session.participant + " (~" +
             std::to_string(session.activeMinutes()) +
             " min on screen). Confirm it in the floating widget.");
}

void AppDelegate::removePending(const std::string& id) {
  std::erase_if(pendings, [&](const Pending& pending) { return pending.id == id; });
  pendingsChanged();
}

void AppDelegate::pendingsChanged() {
  saveJSON(ports().files, pendingFile(), pendings);
  showChange();
}

}  // namespace notewick
