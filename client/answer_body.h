#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/records.h"

namespace notewick {

/// What a call may want of the JSON object that the service answers with. A value that is missing
/// or of another type is absent; of a doubled key the last value counts, whatever its type.
struct AnswerBody {
  struct User {
    std::optional<std::string> email;
    bool operator==(const User&) const = default;
  };

  std::optional<std::string> error;  ///< the service's words, however many
  std::optional<std::string> accessToken;
  std::optional<std::string> refreshToken;
  std::optional<double> expiresAt;  ///< seconds since 1970
  std::optional<User> user;         ///< there when it is an object
  /// In the service's order, without entries that lack one of the three texts; there when it is an
  /// array of objects.
  std::optional<std::vector<Participant>> participants;
  std::optional<std::string> capturedId;

  bool operator==(const AnswerBody&) const = default;
};

/// Reads the body of an answer, with suspicion: nothing is there when it holds no JSON (by the
/// rules of `parseJson`) or no object. Keeps what is wanted and builds no tree of the rest, so that
/// a body of empty arrays takes no memory. Pure function.
[[nodiscard]] AnswerBody readAnswer(std::string body);

}  // namespace notewick
