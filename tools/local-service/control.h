#pragma once

#include <mutex>

#include "tools/local-service/faults.h"
#include "tools/local-service/listener.h"
#include "tools/local-service/records.h"

namespace notewick::service {

/// The last requests, for tests to read back. Holds passwords and tokens as they were sent, so it
/// stays in memory and is kept only with a control port. From any thread.
class RequestLog {
 public:
  static constexpr std::size_t LIMIT = 10'000;

  void add(const httplib::Request& request);
  void clear();

  /// The oldest first: [{"method", "path", "headers": {name: value}, "body"}, ...]
  [[nodiscard]] nlohmann::json requests() const;

 private:
  mutable std::mutex mutex_;
  nlohmann::json requests_ = nlohmann::json::array();
};

/// The tests' side entrance: sets faults, reads back requests and notes (README.md).
[[nodiscard]] Routes controlRoutes(Faults& faults, RequestLog& log, Records& records);

}  // namespace notewick::service
