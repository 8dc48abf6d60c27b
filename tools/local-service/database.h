#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace notewick::service {

/// The rows of one query, one at a time. Lives no longer than its transaction.
class Rows {
 public:
  /// Moves to the next row; false when there is none.
  [[nodiscard]] bool next();

  /// Columns of the present row, counted from 0; NULL reads as empty or 0.
  [[nodiscard]] std::string text(int column) const;
  [[nodiscard]] std::int64_t integer(int column) const;
  [[nodiscard]] std::optional<std::int64_t> optionalInteger(int column) const;

 private:
  friend class Transaction;
  struct Finish {
    void operator()(sqlite3_stmt* statement) const;
  };

  Rows(sqlite3* database, std::string_view sql);
  void bind(int position, std::string_view value);
  void bind(int position, std::int64_t value);
  void bind(int position, std::optional<std::int64_t> value);

  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, Finish> statement_;
};

/// One SQLite database, shared by the threads of the service: a file (created for its owner only,
/// because notes name clients) or ":memory:". Everything is read and written in a transaction.
/// Throws std::runtime_error when SQLite refuses.
class Database {
 public:
  explicit Database(const std::string& path);

 private:
  friend class Transaction;
  struct Close {
    void operator()(sqlite3* database) const;
  };

  std::mutex mutex_;
  std::unique_ptr<sqlite3, Close> handle_;
};

/// Holds the database for itself until destroyed. What is not committed is undone.
class Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Each value takes the place of one question mark.
  template <class... Values>
  [[nodiscard]] Rows query(std::string_view sql, const Values&... values) {
    Rows rows(database_.handle_.get(), sql);
    int position = 0;
    (rows.bind(++position, values), ...);
    return rows;
  }

  template <class... Values>
  void execute(std::string_view sql, const Values&... values) {
    auto rows = query(sql, values...);
    while (rows.next()) {
    }
  }

  void commit();

 private:
  Database& database_;
  std::lock_guard<std::mutex> lock_;
  bool committed_ = false;
};

}  // namespace notewick::service
