#pragma once

#include <httplib.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "tools/local-service/service.h"

namespace notewick::service {

/// A folder of the test's own, gone with it.
struct TemporaryFolder {
  TemporaryFolder() {
    if (!mkdtemp(path.data())) throw std::runtime_error("no temporary folder");
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path); }

  [[nodiscard]] std::string file(const std::string& name) const { return path + "/" + name; }

  std::string path = std::filesystem::temp_directory_path() / "local-service-XXXXXX";
};

/// A clock that moves when told to. Outlives every copy of what clock() gives.
class LogicalClock {
 public:
  void advance(std::chrono::milliseconds by) { now_ += by.count(); }
  [[nodiscard]] Clock clock() {
    return [this] { return Time(std::chrono::milliseconds(now_)); };
  }

 private:
  std::atomic<std::int64_t> now_ = 1'770'000'000'000;
};

/// 0 when there is no answer.
[[nodiscard]] inline int statusOf(const httplib::Result& result) {
  return result ? result->status : 0;
}

/// Null when there is no answer or it is not JSON.
[[nodiscard]] inline nlohmann::json jsonOf(const httplib::Result& result) {
  auto body = nlohmann::json::parse(result ? result->body : "", nullptr, false);
  return body.is_discarded() ? nlohmann::json() : body;
}

[[nodiscard]] inline httplib::Client clientOf(int port) {
  httplib::Client client("http://127.0.0.1:" + std::to_string(port));
  client.set_read_timeout(30);
  return client;
}

/// What the service takes for a note.
[[nodiscard]] inline nlohmann::json noteOf(const std::string& input) {
  return {{"participantId", "p-1"},
          {"input", input},
          {"durationMinutes", 1},
          {"sessionDate", "2026-03-05"}};
}

/// A service with one account and two participants, and the words to speak to it over real
/// connections.
struct TestWorld {
  static constexpr auto EMAIL = "dana@example.org";
  static constexpr auto PASSWORD = "right horse";

  explicit TestWorld(const ServiceSettings& settings = {.controlPort = 0})
      : service(settings, clock.clock()) {
    const auto account = service.records().saveAccount(EMAIL, PASSWORD);
    service.records().saveParticipants(
        account, {{{"id", "p-1"}, {"first_name", "Zoë"}, {"last_name", "Lindqvist"}},
                  {{"id", "p-2"}, {"first_name", "Bo"}, {"last_name", "O'K <& Co>"}}});
  }

  [[nodiscard]] httplib::Client client() const { return clientOf(service.port()); }

  /// The body: JSON, or a text that is sent as it is.
  [[nodiscard]] httplib::Result post(const std::string& path, const nlohmann::json& body,
                                     const std::string& accessToken = "") const {
    const auto text = body.is_string() ? body.get<std::string>() : body.dump();
    return client().Post(path, {{"Authorization", "Bearer " + accessToken}}, text,
                         "application/json");
  }

  /// The answer of a good sign-in, and the access token in it.
  [[nodiscard]] nlohmann::json signIn() const {
    return jsonOf(post("/api/desktop/auth/login", {{"email", EMAIL}, {"password", PASSWORD}}));
  }
  [[nodiscard]] std::string accessToken() const { return signIn().at("accessToken"); }

  [[nodiscard]] int capture(const std::string& accessToken, const nlohmann::json& note) const {
    return statusOf(post("/api/desktop/case-notes/capture", note, accessToken));
  }

  LogicalClock clock;
  LocalService service;
};

}  // namespace notewick::service
