#include "app/app_delegate.h"
#include "detect/pending_list.h"
#include "detect/stamps.h"
#include "model/local_store.h"
#include "platform/ports.h"

namespace notewick {

void AppDelegate::addPending(const WorkSession& session) {
  const std::string id = promote(session, dayStamp(), pendings);
  pendingsChanged();
  announce("Log it? — " + session.participant,
           "Looks like you worked on " + session.participant + " (~" +
               std::to_string(session.activeMinutes()) +
               " min on screen). Confirm it in the floating widget.",
           [id](AppDelegate& self) { self.openAnnounced(id); });
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
