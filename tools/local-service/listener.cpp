#include "tools/local-service/listener.h"

#include <httplib.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "tools/local-service/connections.h"

namespace notewick::service {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t THREADS = 32, PATH_LIMIT = 2048;
constexpr int BACKLOG = 128;

bool loadCertificates(SSL_CTX& context, const CertificateFiles& files) {
  return SSL_CTX_set_min_proto_version(&context, TLS1_2_VERSION) == 1 &&
         SSL_CTX_use_certificate_chain_file(&context, files.certificate.c_str()) == 1 &&
         SSL_CTX_use_PrivateKey_file(&context, files.key.c_str(), SSL_FILETYPE_PEM) == 1;
}

std::unique_ptr<httplib::Server> makeServer(const ListenerSettings& settings) {
  if (!isLoopback(settings.host)) {
    throw std::runtime_error("\"" + settings.host + "\" is not a loopback address");
  }
  if (!settings.tls) return std::make_unique<httplib::Server>();
  auto server = std::make_unique<httplib::SSLServer>(
      [&](SSL_CTX& context) { return loadCertificates(context, *settings.tls); });
  if (!server->is_valid()) throw std::runtime_error("the certificates cannot be used");
  return server;
}

Request requestOf(const httplib::Request& from) {
  constexpr std::array LIBRARYS_OWN = {"REMOTE_ADDR", "REMOTE_PORT", "LOCAL_ADDR", "LOCAL_PORT"};
  Request request{.method = from.method, .path = from.path};
  for (const auto& [name, value] : from.headers) {
    if (std::ranges::find(LIBRARYS_OWN, name) != LIBRARYS_OWN.end()) continue;
    auto& known = request.headers[name];
    known += known.empty() ? value : ", " + value;
  }
  return request;
}

/// Sets the status itself when the body cannot be had whole.
std::optional<std::string> readBody(const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& reader) {
  if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) return "";
  if (request.is_multipart_form_data()) {
    response.status = 415;
    return std::nullopt;
  }
  std::string body;
  const bool whole = reader([&](const char* data, std::size_t size) {
    body.append(data, size);
    return body.size() <= Listener::BODY_LIMIT;
  });
  if (whole) return body;
  if (response.status < 400) response.status = body.size() > Listener::BODY_LIMIT ? 413 : 400;
  return std::nullopt;
}

void setHalfBody(const Answer& answer, httplib::Response& response) {
  response.set_content_provider(
      answer.body.size(), answer.contentType,
      [body = answer.body](std::size_t, std::size_t, httplib::DataSink& sink) {
        sink.write(body.data(), body.size() / 2);
        return false;
      });
}

void deliver(const Answer& answer, const httplib::Request& request, httplib::Response& response) {
  response.status = answer.status;
  for (const auto& [name, value] : answer.headers) response.set_header(name, value);
  const bool canBeHalved = answer.cut == Cut::MidBody && !answer.body.empty();
  if (canBeHalved) {
    setHalfBody(answer, response);
  } else if (answer.cut != Cut::None) {
    shutConnections(request.local_port, [&](int port) { return port == request.remote_port; });
  } else if (!answer.contentType.empty() || !answer.body.empty()) {
    response.set_content(answer.body, answer.contentType);
  }
}

void limit(httplib::Server& server) {
  server.new_task_queue = [] { return std::make_unique<httplib::ThreadPool>(THREADS).release(); };
  server.set_payload_max_length(Listener::BODY_LIMIT);
  server.set_keep_alive_max_count(1000);
  server.set_keep_alive_timeout(60);
  server.set_read_timeout(120s);
  server.set_write_timeout(120s);
  server.set_tcp_nodelay(true);
}

}  // namespace

bool isLoopback(const std::string& host) {
  return host == "127.0.0.1" || host == "::1" || host == "localhost";
}

Listener::Listener(const ListenerSettings& settings, Handler handler)
    : handler_(std::move(handler)), server_(makeServer(settings)), port_(bind(settings)) {
  limit(*server_);
  route();
  thread_ = std::thread([this] {
    server_->listen_after_bind();
    ended_ = true;
  });
  while (!server_->is_running() && !ended_) std::this_thread::sleep_for(1ms);
}

Listener::~Listener() {
  stop();
}

void Listener::stop() {
  if (!thread_.joinable()) return;
  server_->stop();
  constexpr int PATIENT_TURNS = 200;
  for (int turn = 0; !ended_; ++turn) {
    shutConnections(port_, [&](int port) { return turn >= PATIENT_TURNS || !isBusy(port); });
    std::this_thread::sleep_for(10ms);
  }
  thread_.join();
}

int Listener::bind(const ListenerSettings& settings) {
  int listening = -1;
  // The library's own options would let two services share one port.
  server_->set_socket_options([&](int socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    listening = socket;
  });
  const auto host = settings.host == "localhost" ? "127.0.0.1" : settings.host;
  const int port = settings.port == 0                           ? server_->bind_to_any_port(host)
                   : server_->bind_to_port(host, settings.port) ? settings.port
                                                                : -1;
  if (port < 0) throw std::runtime_error("port " + std::to_string(settings.port) + " is taken");
  ::listen(listening, BACKLOG);
  return port;
}

void Listener::begin(int remotePort) {
  const std::lock_guard lock(mutex_);
  busy_.insert(remotePort);
}

void Listener::finish(int remotePort) {
  const std::lock_guard lock(mutex_);
  busy_.erase(remotePort);
}

bool Listener::isBusy(int remotePort) {
  const std::lock_guard lock(mutex_);
  return busy_.contains(remotePort);
}

void Listener::route() {
  const auto answer = [this](const httplib::Request& from, httplib::Response& to,
                             std::string body = {}) {
    begin(from.remote_port);
    auto request = requestOf(from);
    request.body = std::move(body);
    deliver(handler_(request), from, to);
  };
  const auto withBody = [answer](const httplib::Request& from, httplib::Response& to,
                                 const httplib::ContentReader& reader) {
    if (auto body = readBody(from, to, reader)) answer(from, to, std::move(*body));
  };
  const auto withoutBody = [answer](const httplib::Request& from, httplib::Response& to) {
    answer(from, to);
  };
  // The library matches paths by a regular expression, which recurses for every character.
  server_->set_pre_routing_handler([](const httplib::Request& request, httplib::Response& to) {
    if (request.path.size() <= PATH_LIMIT) return httplib::Server::HandlerResponse::Unhandled;
    to.status = 414;
    return httplib::Server::HandlerResponse::Handled;
  });
  server_->set_exception_handler([](const auto&, httplib::Response& to, std::exception_ptr) {
    const auto failure = errorAnswer(500, "Internal error");
    to.status = failure.status;
    to.set_content(failure.body, failure.contentType);
  });
  // Called once an answer, also a failed one, has been written.
  server_->set_logger(
      [this](const httplib::Request& from, const auto&) { finish(from.remote_port); });
  constexpr auto ANY = "[^]*";
  server_->Get(ANY, withoutBody).Options(ANY, withoutBody);
  server_->Post(ANY, withBody).Put(ANY, withBody).Patch(ANY, withBody).Delete(ANY, withBody);
}

}  // namespace notewick::service
