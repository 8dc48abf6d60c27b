#include "tools/local-service/database.h"

#include <sqlite3.h>

#include <stdexcept>

namespace notewick::service {
namespace {

using nlohmann::json;

void check(int result, sqlite3* database) {
  if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE) return;
  throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(database));
}

int bind(sqlite3_stmt* statement, int position, const json& value) {
  if (value.is_null()) return sqlite3_bind_null(statement, position);
  if (value.is_number()) return sqlite3_bind_int64(statement, position, value);
  const auto& text = value.get_ref<const std::string&>();
  return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_STATIC,
                             SQLITE_UTF8);
}

json valueOf(sqlite3_stmt* statement, int column) {
  const int type = sqlite3_column_type(statement, column);
  if (type == SQLITE_NULL) return nullptr;
  if (type == SQLITE_INTEGER) return sqlite3_column_int64(statement, column);
  if (type == SQLITE_FLOAT) return sqlite3_column_double(statement, column);
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
}

json rowOf(sqlite3_stmt* statement) {
  auto row = json::object();
  for (int column = 0; column < sqlite3_column_count(statement); ++column) {
    row[sqlite3_column_name(statement, column)] = valueOf(statement, column);
  }
  return row;
}

}  // namespace

void Database::Close::operator()(sqlite3* database) const {
  sqlite3_close_v2(database);
}

Database::Database(const std::string& path, const std::string& schema) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open(path.c_str(), &handle);
  handle_.reset(handle);
  check(result, handle);
  check(sqlite3_busy_timeout(handle, 10'000), handle);
  check(sqlite3_exec(handle, schema.c_str(), nullptr, nullptr, nullptr), handle);
}

json Database::run(const std::string& sql, const std::vector<json>& values) {
  const std::lock_guard lock(mutex_);
  sqlite3_stmt* handle = nullptr;
  check(sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &handle, nullptr), handle_.get());
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(handle, &sqlite3_finalize);
  int position = 0;
  for (const auto& value : values) check(bind(handle, ++position, value), handle_.get());
  auto rows = json::array();
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(handle)) == SQLITE_ROW) rows.push_back(rowOf(handle));
  check(result, handle_.get());
  return rows;
}

}  // namespace notewick::service
