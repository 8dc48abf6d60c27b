#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/fake_main_loop.h"
#include "tests/support/velk_backend.h"

namespace notewick {

/// The network with the service at its end. Requests arrive here from every session; each is
/// answered by the first of: the answers queued for its path, the trouble that lasts, the working
/// service. Answers arrive in a later turn of the loop, or when the test lets them go.
class FakeService {
 public:
  FakeService(FakeMainLoop& loop, FakeClock& clock) : backend(clock), loop_(loop), clock_(clock) {}

  /// A session whose requests end here; keep one for each client.
  [[nodiscard]] std::unique_ptr<HttpSession> makeSession(const HttpSessionConfiguration& settings);

  // Queued for the next request to a path; a path asked more often works again.
  void answers(std::string_view path, int status,
               const nlohmann::json& body = nlohmann::json::object());
  void answersText(std::string_view path, int status, std::optional<std::string> body);
  void answersNoHttp(std::string_view path);
  void fails(std::string_view path, const std::string& description);

  // Trouble that lasts.
  void answers(int status, const nlohmann::json& body = nlohmann::json::object());
  void isUnreachable(const std::string& description);
  void recovers() { trouble_.reset(); }

  // Answers that take their time.
  void holdsAnswers() { holding_ = true; }
  [[nodiscard]] std::size_t heldAnswers() const { return held_.size(); }
  /// Lets the held answer with this index arrive, counted from 0 among those still held.
  void releases(std::size_t index);
  /// Lets all held answers arrive, and holds none any longer.
  void releasesAll();

  /// "POST /api/desktop/auth/login" for every request so far, in order.
  [[nodiscard]] std::vector<std::string> trail() const;
  [[nodiscard]] std::vector<ReceivedRequest> requestsTo(std::string_view path) const;
  /// Forgets what was received.
  void forgetRequests() { requests.clear(); }

  /// What the test does when a request goes out, before anything is answered.
  std::function<void()> onRequest = [] {};

  VelkBackend backend;
  std::vector<ReceivedRequest> requests;
  std::vector<HttpSessionConfiguration> sessions;

 private:
  friend class FakeHttpSession;
  using Outcome = tl::expected<HttpResponse, TransportError>;
  struct Delivery {
    std::weak_ptr<bool> session;  ///< gone when the session is
    HttpCompletion completion;
    Outcome outcome;
  };

  void receive(HttpRequest request, HttpCompletion completion, std::weak_ptr<bool> session);
  [[nodiscard]] Outcome outcomeOf(const ReceivedRequest& request);
  void deliver(Delivery delivery);

  FakeMainLoop& loop_;
  FakeClock& clock_;
  std::map<std::string, std::deque<Outcome>, std::less<>> queued_;
  std::optional<Outcome> trouble_;
  bool holding_ = false;
  std::vector<Delivery> held_;
};

}  // namespace notewick
