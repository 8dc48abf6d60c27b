#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tools/local-service/control.h"
#include "tools/local-service/faults.h"
#include "tools/local-service/listener.h"
#include "tools/local-service/records.h"

namespace notewick::service {

struct ServiceSettings {
  std::string database = ":memory:";                    // or a file
  std::optional<std::filesystem::path> tlsFolder = {};  // none: plain HTTP
  int port = 0;                                         // 0: any free one
  std::optional<int> controlPort = {};                  // none: no control; 0: any free one
};

[[nodiscard]] Time systemTime();

/// The whole service, running from construction to destruction, which ends delays and lets the
/// requests under way be answered. Its members may be used from any thread while it runs, to set
/// faults and read back what happened.
class LocalService {
 public:
  /// Throws std::runtime_error when it cannot start.
  explicit LocalService(const ServiceSettings& settings, const Clock& clock = systemTime);
  ~LocalService();

  /// "https://localhost:PORT", or "http" when plain.
  [[nodiscard]] std::string origin() const;
  [[nodiscard]] int port() const { return listener_->port(); }
  [[nodiscard]] std::optional<int> controlPort() const;

  [[nodiscard]] Records& records() { return records_; }
  [[nodiscard]] Faults& faults() { return faults_; }

  /// The requests since the start; none without a control port.
  [[nodiscard]] nlohmann::json requests() const { return log_.requests(); }

 private:
  [[nodiscard]] Handler watched(Handler handler);

  std::optional<CertificateFiles> tls_;
  Records records_;
  Faults faults_;
  RequestLog log_;
  std::optional<Listener> control_;
  std::unique_ptr<Listener> listener_;
};

}  // namespace notewick::service
