#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/date.h"

namespace notewick {

/// A person whose name is looked for in window titles, as the service knows them.
struct Participant {
  std::string id;  ///< the service's identifier, sent back with a note
  std::string firstName;
  std::string lastName;

  /// The display name: first name, one space, last name, as stored, not trimmed. Also the key of
  /// the session table.
  [[nodiscard]] std::string name() const { return firstName + " " + lastName; }

  bool operator==(const Participant&) const = default;
};

/// Detected work on one participant on one day that the user has not confirmed yet.
struct Pending {
  std::string id;           ///< upper-case UUID text
  std::string participant;  ///< display name
  std::string day;          ///< local day, "yyyy-MM-dd"
  Date firstSeen;
  Date lastSeen;
  std::int64_t observedMinutes;
  std::vector<std::string> evidence;  ///< window titles, at most 3 added by merging
};

/// A confirmed note on its way to the service.
struct OutboxItem {
  std::string id;  ///< upper-case UUID text
  std::string participantId;
  std::string participantName;
  std::string input;  ///< the note as the user wrote it
  std::int64_t minutes;
  std::string sessionDate;    ///< the day of the work, "yyyy-MM-dd"
  std::int64_t attempts = 0;  ///< uploads that failed
  std::optional<std::string> lastError = std::nullopt;
};

}  // namespace notewick
