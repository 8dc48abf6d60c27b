#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "client/velk_client.h"

namespace notewick {

/// Takes the results of one call to the client, and has a test fail unless there is exactly one.
template <class T>
class Received {
 public:
  /// Give it to the call; this object has to live until the result is there.
  [[nodiscard]] Completion<T> completion() {
    return [this](Result<T> result) { results_.push_back(std::move(result)); };
  }
  [[nodiscard]] bool arrived() const { return !results_.empty(); }
  [[nodiscard]] Result<T> only() const {
    EXPECT_EQ(results_.size(), 1u) << "a call is answered exactly once";
    if (results_.empty()) return tl::unexpected(VELKError::network("never answered"));
    return results_.front();
  }

 private:
  std::vector<Result<T>> results_;
};

/// The error of a result; absent when it is a success.
template <class T>
[[nodiscard]] std::optional<VELKError> errorOf(const Result<T>& result) {
  return result ? std::nullopt : std::optional(result.error());
}

inline void PrintTo(const VELKError& error, std::ostream* out) {
  constexpr const char* kinds[] = {"api", "network", "notSignedIn", "sessionExpired"};
  *out << kinds[std::size_t(error.kind())] << " \"" << error.message() << "\"";
}

}  // namespace notewick
