#pragma once

#include <atomic>
#include <cstdint>
#include <limits>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tools/local-service/listener.h"

namespace notewick::service {

/// When the connection is closed on a request.
enum class Cut { none, before, after, middle };

/// What goes wrong with requests; the fields of its JSON form (README.md).
struct Fault {
  std::string path = {};  // empty: every path
  std::uint32_t times = std::numeric_limits<std::uint32_t>::max();
  double rate = 1;
  double delay = 0;  // seconds
  int status = 0;    // 0: the service's own
  nlohmann::json body = {};
  std::map<std::string, std::string> headers = {};
  Cut cut = Cut::none;
};

/// The faults on command. From any thread.
class Faults {
 public:
  /// Adds one fault, or a list of them, in their JSON form. Throws a Refusal for a field that is
  /// wrong or unknown, and then adds none.
  void add(const nlohmann::json& form);
  void clear();

  /// Answers the request as the handler does, or as the fault wants that it meets: of those for its
  /// path the first that is not used up and that the dice choose. The dice fall the same way in
  /// every run.
  void pass(const httplib::Request& request, httplib::Response& response, const Handler& handler);

  /// Ends all delays, those to come too.
  void endDelays() { delaysEnded_ = true; }

 private:
  std::optional<Fault> take(const std::string& path);
  void delay(double seconds) const;

  std::mutex mutex_;
  std::vector<Fault> faults_;
  std::mt19937 dice_;
  std::atomic<bool> delaysEnded_ = false;
};

}  // namespace notewick::service
