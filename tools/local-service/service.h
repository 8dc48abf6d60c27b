#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "tools/local-service/accounts.h"
#include "tools/local-service/api.h"
#include "tools/local-service/clock.h"
#include "tools/local-service/control.h"
#include "tools/local-service/database.h"
#include "tools/local-service/faults.h"
#include "tools/local-service/listener.h"
#include "tools/local-service/notes.h"
#include "tools/local-service/pages.h"
#include "tools/local-service/pause.h"
#include "tools/local-service/request_log.h"
#include "tools/local-service/router.h"
#include "tools/local-service/tokens.h"

namespace notewick::service {

struct ServiceSettings {
  std::string database = ":memory:";                    // or a file
  std::optional<std::filesystem::path> tlsFolder = {};  // none: plain HTTP
  std::string host = "127.0.0.1";
  int port = 0;                         // 0: any free one
  std::optional<int> controlPort = {};  // none: no control; 0: any free one
  std::chrono::seconds accessLifetime{3600};
  bool logsRequests = false;  // always so with a control port
};

/// The whole service, running from construction to destruction. Its members may be used from any
/// thread while it runs, to set faults and read back what happened.
class LocalService {
 public:
  /// Throws std::runtime_error when it cannot start.
  explicit LocalService(const ServiceSettings& settings, Clock clock = systemTime);
  ~LocalService();
  LocalService(const LocalService&) = delete;
  LocalService& operator=(const LocalService&) = delete;

  /// "https://localhost:PORT", or "http" when plain.
  [[nodiscard]] std::string origin() const;
  [[nodiscard]] int port() const { return listener_->port(); }
  [[nodiscard]] std::optional<int> controlPort() const;

  /// What clients must trust; none when plain.
  [[nodiscard]] std::optional<std::filesystem::path> authorityFile() const;

  [[nodiscard]] Accounts& accounts() { return accounts_; }
  [[nodiscard]] Notes& notes() { return notes_; }
  [[nodiscard]] Faults& faults() { return faults_; }
  [[nodiscard]] RequestLog& requests() { return log_; }

  /// Ends pauses, answers what is being answered, closes all connections.
  void stop();

 private:
  [[nodiscard]] Answer answer(const Request& request);

  ServiceSettings settings_;
  std::optional<CertificateFiles> tls_;
  Database database_;
  Accounts accounts_;
  Notes notes_;
  Tokens tokens_;
  Api api_;
  Pages pages_;
  Faults faults_;
  RequestLog log_;
  Pause pause_;
  Router router_;
  Router controlRouter_;
  std::optional<Listener> listener_;
  std::optional<Listener> control_;
};

}  // namespace notewick::service
