#pragma once

#include <string>
#include <vector>

#include "tools/local-service/accounts.h"
#include "tools/local-service/clock.h"
#include "tools/local-service/database.h"

namespace notewick::service {

/// A captured case note. The name is the one that the participant had at capture.
struct Note {
  std::string id;
  Participant participant;
  std::string input;
  int minutes = 0;
  std::string sessionDate;  // yyyy-MM-dd
  Time capturedAt;

  bool operator==(const Note&) const = default;
};

/// The captured notes. The same note sent twice is kept twice.
class Notes {
 public:
  explicit Notes(Database& database);

  void add(AccountId account, const Note& note);

  /// The account's notes, the last captured first.
  [[nodiscard]] std::vector<Note> newestFirst(AccountId account);

  /// Everyone's notes in the order of capture.
  [[nodiscard]] std::vector<Note> all();

 private:
  Database& database_;
};

}  // namespace notewick::service
