#include "tools/local-service/listener.h"

#include <utility>

namespace notewick::service {
namespace {

using httplib::Request;
using httplib::Response;
using nlohmann::json;
using Reply = httplib::Server::HandlerResponse;

void answerJson(Response& response, int status, const json& body) {
  response.status = status;
  response.set_header("Cache-Control", "no-store");
  response.set_content(body.dump(-1, ' ', false, json::error_handler_t::replace),
                       "application/json");
}

Handler catching(Handler handler) {
  return [handler = std::move(handler)](const Request& request, Response& response) {
    try {
      handler(request, response);
    } catch (const Refusal& refusal) {
      answerJson(response, refusal.status, {{"error", refusal.what()}});
    } catch (const json::exception& wrong) {
      answerJson(response, 400, {{"error", wrong.what()}});
    } catch (const std::exception&) {
      answerJson(response, 500, {{"error", "Internal error"}});
    }
  };
}

/// Without a length the library would wait for the end of the connection.
Reply refuseWithoutLength(const Request& request, Response& response) {
  if (request.method != "POST" || request.has_header("Content-Length")) return Reply::Unhandled;
  answerJson(response, 411, {{"error", "A body needs its length"}});
  return Reply::Handled;
}

std::unique_ptr<httplib::Server> makeServer(const std::optional<CertificateFiles>& tls) {
  if (!tls) return std::make_unique<httplib::Server>();
  auto server = std::make_unique<httplib::SSLServer>(tls->certificate.c_str(), tls->key.c_str());
  if (!server->is_valid()) throw std::runtime_error("the certificates cannot be used");
  return server;
}

void setLimits(httplib::Server& server) {
  server.new_task_queue = [] { return std::make_unique<httplib::ThreadPool>(32U).release(); };
  server.set_payload_max_length(Listener::BODY_LIMIT);
  server.set_keep_alive_max_count(1);
  server.set_keep_alive_timeout(60);
  server.set_read_timeout(120);
  server.set_write_timeout(120);
  server.set_tcp_nodelay(true);
  server.set_pre_routing_handler(refuseWithoutLength);
}

void add(httplib::Server& server, const Route& route, const Handler& handler) {
  if (route.method == "GET") {
    server.Get(route.path, handler);
  } else if (route.method == "POST") {
    server.Post(route.path, handler);
  } else {
    server.Delete(route.path, [handler](const Request& request, Response& response, const auto&) {
      handler(request, response);
    });
  }
}

}  // namespace

Handler answeringJson(std::function<json(const Request&)> function) {
  return [function = std::move(function)](const Request& request, Response& response) {
    answerJson(response, 200, function(request));
  };
}

Listener::Listener(int port, const std::optional<CertificateFiles>& tls,
                   const std::vector<Routes>& routes, const Wrap& wrap)
    : server_(makeServer(tls)), port_(bind(port)) {
  setLimits(*server_);
  for (const auto& group : routes) {
    for (const auto& route : group) add(*server_, route, wrap(catching(route.handler)));
  }
  const auto unknown =
      wrap(catching([](const Request&, Response&) { throw Refusal(404, "Not found"); }));
  server_->set_error_handler([unknown](const Request& request, Response& response) {
    if (response.status == 404 && request.matches.empty()) unknown(request, response);
  });
  thread_ = std::thread([this] { server_->listen_after_bind(); });
  while (!server_->is_running()) std::this_thread::yield();
}

Listener::~Listener() {
  server_->stop();
  thread_.join();
}

int Listener::bind(int wanted) {
  constexpr auto HOST = "127.0.0.1";
  int listening = -1;
  // The library's own options would let two services share one port.
  server_->set_socket_options([&](int socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    listening = socket;
  });
  const int port = wanted == 0                           ? server_->bind_to_any_port(HOST)
                   : server_->bind_to_port(HOST, wanted) ? wanted
                                                         : -1;
  if (port < 0) throw std::runtime_error("port " + std::to_string(wanted) + " is taken");
  ::listen(listening, 128);  // the library's own few lose connections made at once
  return port;
}

}  // namespace notewick::service
