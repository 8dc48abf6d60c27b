#include "tests/support/fake_http_session.h"

namespace notewick {
namespace {

std::string pathOf(const std::string& url) {
  const auto scheme = url.find("://");
  const auto path = scheme == std::string::npos ? 0 : url.find('/', scheme + 3);
  return path == std::string::npos ? "" : url.substr(path);
}

}  // namespace

class FakeHttpSession : public HttpSession {
 public:
  explicit FakeHttpSession(FakeService& service) : service_(service) {}

  void send(HttpRequest request, HttpCompletion completion) override {
    service_.receive(std::move(request), std::move(completion), alive_);
  }

 private:
  FakeService& service_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

std::unique_ptr<HttpSession> FakeService::makeSession(const HttpSessionConfiguration& settings) {
  sessions.push_back(settings);
  return std::make_unique<FakeHttpSession>(*this);
}

void FakeService::answers(std::string_view path, int status, const nlohmann::json& body) {
  answersText(path, status, body.dump());
}

void FakeService::answersText(std::string_view path, int status, std::optional<std::string> body) {
  queued_[std::string(path)].push_back(HttpResponse{status, std::move(body)});
}

void FakeService::answersNoHttp(std::string_view path) {
  queued_[std::string(path)].push_back(HttpResponse{std::nullopt, std::nullopt});
}

void FakeService::fails(std::string_view path, const std::string& description) {
  queued_[std::string(path)].push_back(tl::unexpected(TransportError{description}));
}

void FakeService::answers(int status, const nlohmann::json& body) {
  trouble_ = HttpResponse{status, body.dump()};
}

void FakeService::isUnreachable(const std::string& description) {
  trouble_ = tl::unexpected(TransportError{description});
}

void FakeService::releases(std::size_t index) {
  auto delivery = std::move(held_.at(index));
  held_.erase(held_.begin() + std::ptrdiff_t(index));
  deliver(std::move(delivery));
  loop_.runPosted();
}

void FakeService::releasesAll() {
  holding_ = false;
  for (auto& delivery : std::exchange(held_, {})) deliver(std::move(delivery));
  loop_.runPosted();
}

std::vector<std::string> FakeService::trail() const {
  std::vector<std::string> lines;
  for (const auto& request : requests) lines.push_back(request.method + " " + request.path);
  return lines;
}

std::vector<ReceivedRequest> FakeService::requestsTo(std::string_view path) const {
  std::vector<ReceivedRequest> found;
  for (const auto& request : requests)
    if (request.path == path) found.push_back(request);
  return found;
}

void FakeService::receive(HttpRequest request, HttpCompletion completion,
                          std::weak_ptr<bool> session) {
  requests.push_back({request.method, pathOf(request.url), request.url, request.headers,
                      request.body, request.timeout, clock_.now()});
  onRequest();
  Delivery delivery{std::move(session), std::move(completion), outcomeOf(requests.back())};
  if (holding_)
    held_.push_back(std::move(delivery));
  else
    deliver(std::move(delivery));
}

FakeService::Outcome FakeService::outcomeOf(const ReceivedRequest& request) {
  const auto queue = queued_.find(request.path);
  if (queue != queued_.end() && !queue->second.empty()) {
    auto outcome = std::move(queue->second.front());
    queue->second.pop_front();
    return outcome;
  }
  return trouble_ ? *trouble_ : backend.handle(request);
}

void FakeService::deliver(Delivery delivery) {
  loop_.post([delivery = std::move(delivery)] {
    if (!delivery.session.expired()) delivery.completion(delivery.outcome);
  });
}

}  // namespace notewick
