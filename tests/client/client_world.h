#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "client/velk_client.h"
#include "tests/support/world.h"

namespace notewick {

/// The error of a result; absent when it is a success.
template <class T>
[[nodiscard]] std::optional<VELKError> errorOf(const Result<T>& result) {
  return result ? std::nullopt : std::optional(result.error());
}

inline void PrintTo(const VELKError& error, std::ostream* out) {
  constexpr const char* KINDS[] = {"api", "network", "notSignedIn", "sessionExpired"};
  *out << KINDS[std::size_t(error.kind())] << " \"" << error.message() << "\"";
}

/// A call to the client that is under way. Has a test fail unless it is answered exactly once.
template <class T>
class Call {
 public:
  [[nodiscard]] Completion<T> completion() const {
    return [results = results_](Result<T> result) { results->push_back(std::move(result)); };
  }
  [[nodiscard]] bool isAnswered() const { return !results_->empty(); }
  [[nodiscard]] Result<T> result() const {
    EXPECT_EQ(results_->size(), 1u) << "a call is answered exactly once";
    return isAnswered() ? results_->front() : tl::unexpected(VELKError::network("no answer"));
  }
  [[nodiscard]] std::optional<VELKError> error() const { return errorOf(result()); }

 private:
  std::shared_ptr<std::vector<Result<T>>> results_ = std::make_shared<std::vector<Result<T>>>();
};

/// A world in which the client runs without the program around it.
class ClientTest : public WorldTest {
 protected:
  using ParticipantsCall = Call<std::vector<Participant>>;
  using NoteCall = Call<std::optional<std::string>>;

  [[nodiscard]] static VELKClient& client() { return VELKClient::shared(); }

  static Call<void> startLogin(const std::string& email = "ada@velk.example",
                               const std::string& password = "correct horse") {
    Call<void> call;
    client().login(email, password, call.completion());
    return call;
  }
  static ParticipantsCall startFetch() {
    ParticipantsCall call;
    client().fetchParticipants(call.completion());
    return call;
  }
  static NoteCall startCapture(const std::string& input = "Phoned") {
    NoteCall call;
    client().captureNote("2", input, 30, "2024-05-01", call.completion());
    return call;
  }

  // The same calls, and their results.
  Result<void> login() { return resultOf(startLogin()); }
  Result<std::vector<Participant>> fetch() { return resultOf(startFetch()); }
  Result<std::optional<std::string>> capture() { return resultOf(startCapture()); }

  /// The client holds an access token that is good for an hour; no request is remembered.
  void hasFreshToken() {
    EXPECT_TRUE(login());
    service.forgetRequests();
  }

  /// What the next call for participants sends.
  std::vector<std::string> sentByACall() {
    service.forgetRequests();
    (void)fetch();
    return service.trail();
  }
  inline static const std::vector<std::string> REFRESHED_FIRST = {"POST /api/desktop/auth/refresh",
                                                                  "GET /api/desktop/participants"};
  inline static const std::vector<std::string> NOT_REFRESHED = {"GET /api/desktop/participants"};

  /// What a call ends in when the service answers the next request to this path so.
  std::optional<VELKError> errorAfter(std::string_view path, int status,
                                      const nlohmann::json& body = nlohmann::json::object()) {
    service.answers(path, status, body);
    return errorOfCallTo(path);
  }
  /// What signing in, a refresh before a call, a call for participants or a note ends in.
  std::optional<VELKError> errorOfCallTo(std::string_view path) {
    if (path == LOGIN_PATH) return errorOf(login());
    return path == CAPTURE_PATH ? errorOf(capture()) : errorOf(fetch());
  }

 private:
  template <class T>
  Result<T> resultOf(const Call<T>& call) {
    loop.runPosted();
    return call.result();
  }
};

}  // namespace notewick
