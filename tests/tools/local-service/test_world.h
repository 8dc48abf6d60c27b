#pragma once

#include <httplib.h>

#include <atomic>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tools/local-service/service.h"

namespace notewick::service {

/// A folder of the test's own, gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::filesystem::path file(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// A clock that moves when told to. Outlives every copy of what clock() gives.
class LogicalClock {
 public:
  void advance(std::chrono::milliseconds by) { now_ += by.count(); }
  [[nodiscard]] Time now() const { return Time(std::chrono::milliseconds(now_)); }
  [[nodiscard]] Clock clock() {
    return [this] { return now(); };
  }

 private:
  std::atomic<std::int64_t> now_ = 1'770'000'000'000;
};

/// A service with one account, and the words to speak to it over real connections.
class TestWorld {
 public:
  static constexpr auto EMAIL = "dana@example.org";
  static constexpr auto PASSWORD = "right horse";

  /// Plain HTTP, in memory, with its requests logged, unless told otherwise.
  explicit TestWorld(ServiceSettings settings = {.logsRequests = true});

  LogicalClock clock;
  LocalService service;

  [[nodiscard]] httplib::Result get(const std::string& path, const std::string& accessToken = "");
  [[nodiscard]] httplib::Result post(const std::string& path, const std::string& body,
                                     const std::string& accessToken = "");
  [[nodiscard]] httplib::Client client() const;

  /// The answer of a good sign-in.
  [[nodiscard]] nlohmann::json signIn();
  [[nodiscard]] std::string accessToken();
  [[nodiscard]] httplib::Result refresh(const std::string& refreshToken);
  [[nodiscard]] httplib::Result capture(const std::string& accessToken, const std::string& input);

  /// The cookie of a browser that signed in, as it is sent back.
  [[nodiscard]] httplib::Headers browserCookie();
};

/// Null when there is no answer or it is not JSON.
[[nodiscard]] nlohmann::json jsonOf(const httplib::Result& result);

/// 0 when there is no answer.
[[nodiscard]] int statusOf(const httplib::Result& result);

}  // namespace notewick::service
