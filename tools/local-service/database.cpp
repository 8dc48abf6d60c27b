#include "tools/local-service/database.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

namespace notewick::service {
namespace {

void check(int result, sqlite3* database) {
  if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE) return;
  throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(database));
}

void makePrivateFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file >= 0) ::close(file);
}

}  // namespace

void Rows::Finish::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

Rows::Rows(sqlite3* database, std::string_view sql) : database_(database) {
  sqlite3_stmt* statement = nullptr;
  const auto length = static_cast<int>(sql.size());
  check(sqlite3_prepare_v2(database, sql.data(), length, &statement, nullptr), database);
  statement_.reset(statement);
}

void Rows::bind(int position, std::string_view value) {
  check(sqlite3_bind_text64(statement_.get(), position, value.empty() ? "" : value.data(),
                            value.size(), SQLITE_TRANSIENT, SQLITE_UTF8),
        database_);
}

void Rows::bind(int position, std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), position, value), database_);
}

void Rows::bind(int position, std::optional<std::int64_t> value) {
  if (value) bind(position, *value);
}

bool Rows::next() {
  const int result = sqlite3_step(statement_.get());
  check(result, database_);
  return result == SQLITE_ROW;
}

std::string Rows::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
  return bytes ? std::string(bytes, size) : std::string{};
}

std::int64_t Rows::integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

std::optional<std::int64_t> Rows::optionalInteger(int column) const {
  if (sqlite3_column_type(statement_.get(), column) == SQLITE_NULL) return std::nullopt;
  return integer(column);
}

void Database::Close::operator()(sqlite3* database) const {
  sqlite3_close_v2(database);
}

Database::Database(const std::string& path) {
  if (path != ":memory:") makePrivateFile(path);
  sqlite3* handle = nullptr;
  const int result = sqlite3_open(path.c_str(), &handle);
  handle_.reset(handle);
  check(result, handle);
  check(sqlite3_busy_timeout(handle, 10'000), handle);
  check(sqlite3_exec(handle, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr), handle);
}

Transaction::Transaction(Database& database) : database_(database), lock_(database.mutex_) {
  execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  if (!committed_) {
    sqlite3_exec(database_.handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

void Transaction::commit() {
  execute("COMMIT");
  committed_ = true;
}

}  // namespace notewick::service
