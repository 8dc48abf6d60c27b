#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

#include "tools/local-service/http.h"

namespace notewick::service {

/// The last requests, for tests to read back. Holds passwords and tokens as they were sent, so it
/// stays in memory and is kept only when asked for. From any thread.
class RequestLog {
 public:
  static constexpr std::size_t LIMIT = 10'000;

  void add(const Request& request);
  void clear();

  /// The oldest first.
  [[nodiscard]] std::vector<Request> requests() const;

 private:
  mutable std::mutex mutex_;
  std::deque<Request> requests_;
};

}  // namespace notewick::service
