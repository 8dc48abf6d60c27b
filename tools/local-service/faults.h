#pragma once

#include <chrono>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tools/local-service/http.h"
#include "tools/local-service/pause.h"

namespace notewick::service {

/// What goes wrong with the requests to a path.
struct Fault {
  std::string path = {};                    // empty: every path
  std::optional<std::uint64_t> times = {};  // how many requests are left; none: until cleared
  double rate = 1;                          // the part of the requests that it hits
  std::chrono::milliseconds delay{0};       // before anything else happens
  bool ignoresRequest = false;              // the service never sees it, and nothing answers
  std::optional<Answer> answer =
      {};               // given in place of the service's own, which then does nothing
  Cut cut = Cut::None;  // of the answer, the service's own or the one given
};

/// Reads one fault's JSON form (README.md); throws std::runtime_error naming the field that is
/// wrong or unknown.
[[nodiscard]] Fault faultFromJson(const nlohmann::json& json);

/// The faults on command. From any thread.
class Faults {
 public:
  void add(Fault fault);
  void clear();

  /// The fault that this request meets: of those for its path the first that is not used up and
  /// that the dice choose. The dice fall the same way in every run.
  [[nodiscard]] std::optional<Fault> take(const Request& request);

 private:
  std::mutex mutex_;
  std::vector<Fault> faults_;
  std::mt19937 dice_;
};

/// Lets the fault happen to a request that next would answer.
[[nodiscard]] Answer suffer(const Fault& fault, const Request& request, const Handler& next,
                            const Pause& pause);

}  // namespace notewick::service
