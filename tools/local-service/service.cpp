#include "tools/local-service/service.h"

#include <utility>

#include "tools/local-service/endpoints.h"

namespace notewick::service {
Time systemTime() {
  return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

LocalService::LocalService(const ServiceSettings& settings, const Clock& clock)
    : records_(settings.database, clock) {
  if (settings.tlsFolder) tls_ = ensureCertificates(*settings.tlsFolder);
  if (settings.controlPort) {
    control_.emplace(*settings.controlPort, std::nullopt,
                     std::vector<Routes>{controlRoutes(faults_, log_, records_)});
  }
  listener_ = std::make_unique<Listener>(
      settings.port, tls_,
      std::vector<Routes>{apiRoutes(records_), pageRoutes(records_, tls_.has_value())},
      [this](Handler handler) { return watched(std::move(handler)); });
}

LocalService::~LocalService() {
  faults_.endDelays();
}

std::string LocalService::origin() const {
  return std::string(tls_ ? "https" : "http") + "://localhost:" + std::to_string(port());
}

std::optional<int> LocalService::controlPort() const {
  return control_ ? std::optional(control_->port()) : std::nullopt;
}

Handler LocalService::watched(Handler handler) {
  return [this, handler = std::move(handler)](const httplib::Request& request,
                                              httplib::Response& response) {
    if (control_) log_.add(request);
    faults_.pass(request, response, handler);
  };
}

}  // namespace notewick::service
