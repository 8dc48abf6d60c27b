#include "tools/local-service/request_log.h"

namespace notewick::service {

void RequestLog::add(const Request& request) {
  const std::lock_guard lock(mutex_);
  if (requests_.size() == LIMIT) requests_.pop_front();
  requests_.push_back(request);
}

void RequestLog::clear() {
  const std::lock_guard lock(mutex_);
  requests_.clear();
}

std::vector<Request> RequestLog::requests() const {
  const std::lock_guard lock(mutex_);
  return {requests_.begin(), requests_.end()};
}

}  // namespace notewick::service
