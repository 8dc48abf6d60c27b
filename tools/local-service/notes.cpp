#include "tools/local-service/notes.h"

namespace notewick::service {
namespace {

constexpr std::string_view SELECT =
    "SELECT id, participant_id, first_name, last_name, input, minutes, session_date, captured_at "
    "FROM notes ";

std::vector<Note> notesOf(Rows rows) {
  std::vector<Note> notes;
  while (rows.next()) {
    notes.push_back({.id = rows.text(0),
                     .participant = {rows.text(1), rows.text(2), rows.text(3)},
                     .input = rows.text(4),
                     .minutes = static_cast<int>(rows.integer(5)),
                     .sessionDate = rows.text(6),
                     .capturedAt = Time(std::chrono::milliseconds(rows.integer(7)))});
  }
  return notes;
}

}  // namespace

Notes::Notes(Database& database) : database_(database) {
  Transaction transaction(database_);
  transaction.execute(
      "CREATE TABLE IF NOT EXISTS notes (number INTEGER PRIMARY KEY AUTOINCREMENT, "
      "id TEXT NOT NULL UNIQUE, account INTEGER NOT NULL REFERENCES accounts, "
      "participant_id TEXT NOT NULL, first_name TEXT NOT NULL, last_name TEXT NOT NULL, "
      "input TEXT NOT NULL, minutes INTEGER NOT NULL, session_date TEXT NOT NULL, "
      "captured_at INTEGER NOT NULL)");
  transaction.commit();
}

void Notes::add(AccountId account, const Note& note) {
  Transaction transaction(database_);
  transaction.execute(
      "INSERT INTO notes (id, account, participant_id, first_name, last_name, input, minutes, "
      "session_date, captured_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
      note.id, account, note.participant.id, note.participant.firstName, note.participant.lastName,
      note.input, note.minutes, note.sessionDate, note.capturedAt.time_since_epoch().count());
  transaction.commit();
}

std::vector<Note> Notes::newestFirst(AccountId account) {
  Transaction transaction(database_);
  const auto sql = std::string(SELECT) + "WHERE account = ? ORDER BY number DESC";
  return notesOf(transaction.query(sql, account));
}

std::vector<Note> Notes::all() {
  Transaction transaction(database_);
  return notesOf(transaction.query(std::string(SELECT) + "ORDER BY number"));
}

}  // namespace notewick::service
