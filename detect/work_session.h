#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/date.h"

namespace notewick {

/// Keeps a window title as evidence, unless it is empty or already kept, or 3 are kept.
void addEvidence(const std::string& title, std::vector<std::string>& evidence);

/// The work on one participant while it goes on; kept in memory only.
class WorkSession {
 public:
  /// A session that begins with one sighting.
  WorkSession(std::string participant, Date at);

  std::string participant;  ///< display name
  Date firstSeen;
  Date lastSeen;
  std::int64_t sightings = 1;         ///< samples that saw the participant
  std::vector<std::string> evidence;  ///< up to 3 distinct window titles, none empty

  /// Counts one more sample that saw the participant.
  void addSighting(Date at);

  /// Minutes on screen: `SAMPLE_INTERVAL` for each sighting, rounded up, at least 1.
  [[nodiscard]] std::int64_t activeMinutes() const;

  /// Whether the participant has been off the screen for more than `SESSION_GAP`.
  [[nodiscard]] bool hasEnded(Date now) const;

  /// Whether the session was long enough to become a pending item.
  [[nodiscard]] bool countsAsWork() const;
};

}  // namespace notewick
