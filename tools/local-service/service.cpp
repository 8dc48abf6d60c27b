#include "tools/local-service/service.h"

namespace notewick::service {
namespace {

std::optional<CertificateFiles> certificatesFor(const ServiceSettings& settings) {
  if (!settings.tlsFolder) return std::nullopt;
  return ensureCertificates(*settings.tlsFolder);
}

}  // namespace

LocalService::LocalService(const ServiceSettings& settings, Clock clock)
    : settings_(settings),
      tls_(certificatesFor(settings)),
      database_(settings.database),
      accounts_(database_),
      notes_(database_),
      tokens_(database_, clock, settings.accessLifetime),
      api_(accounts_, notes_, tokens_, clock),
      pages_(accounts_, notes_, tokens_, settings.tlsFolder.has_value()) {
  api_.addTo(router_);
  pages_.addTo(router_);
  addControl(controlRouter_, faults_, log_, notes_);
  listener_.emplace(ListenerSettings{settings.host, settings.port, tls_},
                    [this](const Request& request) { return answer(request); });
  if (settings.controlPort) {
    control_.emplace(ListenerSettings{settings.host, *settings.controlPort, std::nullopt},
                     [this](const Request& request) { return controlRouter_.answer(request); });
  }
}

LocalService::~LocalService() {
  stop();
}

std::string LocalService::origin() const {
  return std::string(tls_ ? "https" : "http") + "://localhost:" + std::to_string(port());
}

std::optional<int> LocalService::controlPort() const {
  return control_ ? std::optional(control_->port()) : std::nullopt;
}

std::optional<std::filesystem::path> LocalService::authorityFile() const {
  return tls_ ? std::optional(tls_->authority) : std::nullopt;
}

void LocalService::stop() {
  pause_.end();
  listener_->stop();
  if (control_) control_->stop();
}

Answer LocalService::answer(const Request& request) {
  if (settings_.logsRequests || settings_.controlPort) log_.add(request);
  const Handler serve = [this](const Request& served) { return router_.answer(served); };
  const auto fault = faults_.take(request);
  return fault ? suffer(*fault, request, serve, pause_) : serve(request);
}

}  // namespace notewick::service
