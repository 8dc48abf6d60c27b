#include "detect/pending_list.h"

#include <algorithm>

#include "model/integers.h"
#include "platform/ports.h"

namespace notewick {
namespace {

void merge(const WorkSession& session, Pending& pending) {
  pending.lastSeen = session.lastSeen;
  pending.observedMinutes = saturatingSum(pending.observedMinutes, session.activeMinutes());
  for (const std::string& title : session.evidence) addEvidence(title, pending.evidence);
}

}  // namespace

std::string promote(const WorkSession& session, const std::string& day,
                    std::vector<Pending>& pendings) {
  const auto sameWork = std::find_if(pendings.begin(), pendings.end(), [&](const Pending& pending) {
    return pending.participant == session.participant && pending.day == day;
  });
  if (sameWork != pendings.end()) {
    merge(session, *sameWork);
    return sameWork->id;
  }
  pendings.push_back({ports().uuids.next(), session.participant, day, session.firstSeen,
                      session.lastSeen, session.activeMinutes(), session.evidence});
  return pendings.back().id;
}

}  // namespace notewick
