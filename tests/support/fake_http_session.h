#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_main_loop.h"
#include "tests/support/velk_backend.h"

namespace notewick {

/// The network with the service at its end. Requests arrive here from every session; each is
/// answered by the first of: the answers queued for its path, the trouble that lasts, the working
/// service. Answers arrive in a later turn of the loop, or when the test lets them go.
class FakeService {
 public:
  FakeService(FakeMainLoop& loop, FakeClock& clock) : backend(clock), loop_(loop) {}

  /// A session whose requests end here; keep one for each client.
  [[nodiscard]] std::unique_ptr<HttpSession> makeSession(const HttpSessionConfiguration& settings) {
    sessions.push_back(settings);
    return std::make_unique<Session>(*this);
  }

  // Queued for the next request to a path; a path asked more often works again.
  void answers(std::string_view path, int status,
               const nlohmann::json& body = nlohmann::json::object()) {
    queue(path, HttpResponse{status, body.dump()});
  }
  void answersWithoutBody(std::string_view path, int status) {
    queue(path, HttpResponse{status, std::nullopt});
  }
  void answersNoHttp(std::string_view path) { queue(path, HttpResponse{}); }
  void fails(std::string_view path, const std::string& description) {
    queue(path, tl::unexpected(TransportError{description}));
  }

  // Trouble that lasts.
  void answers(int status, const nlohmann::json& body = nlohmann::json::object()) {
    trouble_ = HttpResponse{status, body.dump()};
  }
  void isUnreachable(const std::string& description) {
    trouble_ = tl::unexpected(TransportError{description});
  }
  void recovers() { trouble_.reset(); }

  // Answers that take their time.
  void holdsAnswers() { holding_ = true; }
  [[nodiscard]] std::size_t heldAnswers() const { return held_.size(); }
  /// Lets the held answer with this index arrive, counted from 0 among those still held.
  void releases(std::size_t index) {
    deliver(std::move(held_.at(index)));
    held_.erase(held_.begin() + std::ptrdiff_t(index));
    loop_.runPosted();
  }
  /// Lets all held answers arrive, and holds none any longer.
  void releasesAll() {
    holding_ = false;
    for (auto& delivery : std::exchange(held_, {})) deliver(std::move(delivery));
    loop_.runPosted();
  }

  /// "POST /api/desktop/auth/login" for every request so far, in order.
  [[nodiscard]] std::vector<std::string> trail() const {
    std::vector<std::string> lines;
    for (const auto& request : requests) lines.push_back(request.method + " " + request.path);
    return lines;
  }
  [[nodiscard]] std::vector<ReceivedRequest> requestsTo(std::string_view path) const {
    auto found = requests;
    std::erase_if(found, [&](const auto& request) { return request.path != path; });
    return found;
  }
  /// Forgets what was received.
  void forgetRequests() { requests.clear(); }

  /// What the test does when a request goes out, before anything is answered.
  std::function<void()> onRequest = [] {};

  VelkBackend backend;
  std::vector<ReceivedRequest> requests;
  std::vector<HttpSessionConfiguration> sessions;

 private:
  using Outcome = tl::expected<HttpResponse, TransportError>;
  struct Delivery {
    std::weak_ptr<bool> session;  ///< gone when the session is
    HttpCompletion completion;
    Outcome outcome;
  };
  struct Session : HttpSession {
    explicit Session(FakeService& network) : service(network) {}
    void send(HttpRequest request, HttpCompletion completion) override {
      service.receive(request, std::move(completion), alive);
    }
    FakeService& service;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
  };

  void queue(std::string_view path, Outcome outcome) {
    queued_[std::string(path)].push_back(std::move(outcome));
  }

  void receive(const HttpRequest& request, HttpCompletion completion, std::weak_ptr<bool> session) {
    const auto authority = request.url.find("://") + 3;
    const auto path =
        request.url.substr(std::min(request.url.find('/', authority), request.url.size()));
    requests.push_back(
        {request.method, path, request.url, request.headers, request.body, request.timeout});
    onRequest();
    Delivery delivery{std::move(session), std::move(completion), outcomeOf(requests.back())};
    if (holding_)
      held_.push_back(std::move(delivery));
    else
      deliver(std::move(delivery));
  }

  [[nodiscard]] Outcome outcomeOf(const ReceivedRequest& request) {
    auto& queued = queued_[request.path];
    if (queued.empty()) return trouble_ ? *trouble_ : backend.handle(request);
    auto outcome = std::move(queued.front());
    queued.pop_front();
    return outcome;
  }

  void deliver(Delivery delivery) {
    loop_.post([delivery = std::move(delivery)] {
      if (!delivery.session.expired()) delivery.completion(delivery.outcome);
    });
  }

  FakeMainLoop& loop_;
  std::map<std::string, std::deque<Outcome>> queued_;
  std::optional<Outcome> trouble_;
  bool holding_ = false;
  std::vector<Delivery> held_;
};

}  // namespace notewick
