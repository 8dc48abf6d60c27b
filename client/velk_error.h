#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace notewick {

/// Why a call to the service failed. A closed value: callers ask for its kind, never for its text.
class VELKError {
 public:
  enum class Kind {
    api,             ///< the service refused, or answered what nobody expects
    network,         ///< no answer, or one that is worth another try
    notSignedIn,     ///< there is no refresh token
    sessionExpired,  ///< the service takes the refresh token no longer
  };

  [[nodiscard]] static VELKError api(std::string text) { return {Kind::api, std::move(text)}; }
  /// An `api` error of a sign-in whose e-mail or password is wrong.
  [[nodiscard]] static VELKError wrongCredentials(std::string text) {
    VELKError error = api(std::move(text));
    error.blamesCredentials_ = true;
    return error;
  }
  [[nodiscard]] static VELKError network(std::string text) {
    return {Kind::network, std::move(text)};
  }
  [[nodiscard]] static VELKError notSignedIn() { return {Kind::notSignedIn, "Not signed in"}; }
  [[nodiscard]] static VELKError sessionExpired() {
    return {Kind::sessionExpired, "Session expired — please sign in again"};
  }
  /// The user has signed out, or in anew, since the call was made.
  [[nodiscard]] static VELKError overtaken() { return network("Signed out meanwhile"); }

  [[nodiscard]] Kind kind() const { return kind_; }
  /// The text that the user interface shows.
  [[nodiscard]] const std::string& message() const { return message_; }
  /// Whether the same call may succeed later by itself.
  [[nodiscard]] bool isRetryable() const { return kind_ == Kind::network; }
  /// Whether the service has refused: the same call would fail again.
  [[nodiscard]] bool isRefusal() const { return kind_ == Kind::api; }
  /// Whether only the user can help, by signing in.
  [[nodiscard]] bool needsSignIn() const {
    return kind_ == Kind::notSignedIn || kind_ == Kind::sessionExpired;
  }

  /// Whether the user has to correct e-mail or password.
  [[nodiscard]] bool blamesCredentials() const { return blamesCredentials_; }

  bool operator==(const VELKError&) const = default;

 private:
  VELKError(Kind kind, std::string message) : kind_(kind), message_(std::move(message)) {}

  Kind kind_;
  std::string message_;
  bool blamesCredentials_ = false;
};

template <class T>
using Result = tl::expected<T, VELKError>;

}  // namespace notewick
