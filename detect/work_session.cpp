#include "detect/work_session.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/constants.h"
#include "platform/fatal_error.h"

namespace notewick {
namespace {

constexpr std::size_t MOST_EVIDENCE = 3;

}  // namespace

void addEvidence(const std::string& title, std::vector<std::string>& evidence) {
  const bool known = std::find(evidence.begin(), evidence.end(), title) != evidence.end();
  if (!title.empty() && !known && evidence.size() < MOST_EVIDENCE) evidence.push_back(title);
}

WorkSession::WorkSession(std::string name, Date at)
    : participant(std::move(name)), firstSeen(at), lastSeen(at) {}

void WorkSession::addSighting(Date at) {
  lastSeen = at;
  sightings = checkedSum<std::int64_t>(sightings, 1);
}

std::int64_t WorkSession::activeMinutes() const {
  const double minutes = std::ceil(SAMPLE_INTERVAL * static_cast<double>(sightings) / 60.0);
  return std::max<std::int64_t>(1, static_cast<std::int64_t>(minutes));
}

bool WorkSession::hasEnded(Date now) const {
  return (now - lastSeen).count() > SESSION_GAP;
}

bool WorkSession::countsAsWork() const {
  return sightings >= MIN_SIGHTINGS && (lastSeen - firstSeen).count() >= MIN_SPAN;
}

}  // namespace notewick
