#pragma once

#include <map>
#include <string>

#include "tools/local-service/http.h"

namespace notewick::service {

/// Finds the handler of a request by its exact path and method. Filled before the first request,
/// read from any thread afterwards.
class Router {
 public:
  void add(const std::string& method, const std::string& path, Handler handler);

  /// 404 for a path that nobody took, 405 with Allow for a method that the path does not know.
  /// HEAD is answered as GET.
  [[nodiscard]] Answer answer(const Request& request) const;

 private:
  std::map<std::string, std::map<std::string, Handler>> handlers_;  // by path, then by method
};

}  // namespace notewick::service
