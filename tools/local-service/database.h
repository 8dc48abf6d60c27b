#pragma once

#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

struct sqlite3;

namespace notewick::service {

/// One SQLite database, shared by the threads of the service: a file or ":memory:". Throws
/// std::runtime_error when SQLite refuses.
class Database {
 public:
  /// schema: run at once; makes what is missing.
  Database(const std::string& path, const std::string& schema);

  /// Runs one statement, which takes effect as a whole or not at all. Each value (null, a whole
  /// number or text) takes the place of a question mark. Returns the rows: a list of objects, by
  /// the names of the columns.
  nlohmann::json run(const std::string& sql, const std::vector<nlohmann::json>& values = {});

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };

  std::mutex mutex_;
  std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace notewick::service
