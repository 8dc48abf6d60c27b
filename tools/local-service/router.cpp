#include "tools/local-service/router.h"

#include <utility>

namespace notewick::service {

void Router::add(const std::string& method, const std::string& path, Handler handler) {
  handlers_[path][method] = std::move(handler);
}

Answer Router::answer(const Request& request) const {
  const auto methods = handlers_.find(request.path);
  if (methods == handlers_.end()) return errorAnswer(404, "Not found");
  const auto found = methods->second.find(request.method == "HEAD" ? "GET" : request.method);
  if (found != methods->second.end()) return found->second(request);

  std::string allowed;
  for (const auto& [method, handler] : methods->second) {
    allowed += (allowed.empty() ? "" : ", ") + method;
  }
  auto refusal = errorAnswer(405, "Method not allowed");
  refusal.headers.emplace_back("Allow", allowed);
  return refusal;
}

}  // namespace notewick::service
