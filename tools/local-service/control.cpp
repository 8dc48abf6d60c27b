#include "tools/local-service/control.h"

#include <map>

namespace notewick::service {
namespace {

using httplib::Request;
using nlohmann::json;

std::map<std::string, std::string> headersOf(const Request& request) {
  std::map<std::string, std::string> headers;
  for (const auto& [name, value] : request.headers) {
    auto& known = headers[name];
    known += known.empty() ? value : ", " + value;
  }
  for (const auto* const librarysOwn : {"REMOTE_ADDR", "REMOTE_PORT", "LOCAL_ADDR", "LOCAL_PORT"}) {
    headers.erase(librarysOwn);
  }
  return headers;
}

}  // namespace

void RequestLog::add(const Request& request) {
  const std::lock_guard lock(mutex_);
  if (requests_.size() == LIMIT) requests_.erase(0);
  requests_.push_back({{"method", request.method},
                       {"path", request.path},
                       {"headers", headersOf(request)},
                       {"body", request.body}});
}

json RequestLog::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void RequestLog::clear() {
  const std::lock_guard lock(mutex_);
  requests_.clear();
}

Routes controlRoutes(Faults& faults, RequestLog& log, Records& records) {
  const auto doing = [](auto action) {
    return answeringJson([action](const Request& request) {
      action(request);
      return json::object();
    });
  };
  return {{"POST", "/faults",
           doing([&faults](const Request& request) { faults.add(json::parse(request.body)); })},
          {"DELETE", "/faults", doing([&faults](const Request&) { faults.clear(); })},
          {"DELETE", "/requests", doing([&log](const Request&) { log.clear(); })},
          {"GET", "/requests", answeringJson([&log](const Request&) { return log.requests(); })},
          {"GET", "/notes", answeringJson([&records](const Request&) { return records.notes(); })}};
}

}  // namespace notewick::service
