// Requests to the local service from anybody: every one is answered, refused, or found to be no
// JSON that is wanted; nothing else is thrown, which would be an internal error. The first byte
// chooses the route, the second whether the request is signed in; the rest is the body, and stands
// in the headers and the query, too.
#include "fuzz/targets.h"
#include "tools/local-service/control.h"
#include "tools/local-service/endpoints.h"

namespace notewick::service {
namespace {

using httplib::Request;
using httplib::Response;
using nlohmann::json;
using notewick::fuzz::require;

/// The service without its listener, with one account, one participant and a clock that stands.
struct Desk {
  Desk() {
    const auto account = records.saveAccount("ada@velk.example", "correct horse");
    records.saveParticipants(account, {{{"id", "p"}, {"first_name", "A"}, {"last_name", "B"}}});
    token = records.openSession(account).at("accessToken");
    for (auto group : {apiRoutes(records), pageRoutes(records, true)}) {
      for (auto& route : group) routes.push_back(std::move(route));
    }
  }

  Records records{":memory:", [] { return Time(std::chrono::seconds(1'770'000'000)); }};
  Routes routes;
  std::string token;
};

Request requestFrom(std::string_view bytes, const std::string& token) {
  Request request;
  request.path = "/";
  request.body = bytes.substr(2);
  const bool isSignedIn = (bytes[1] & 1) != 0;
  const std::string header = isSignedIn ? token : request.body;
  request.headers = {{"Authorization", "Bearer " + header},
                     {"Cookie", isSignedIn ? "notewick_session=" + token : request.body}};
  request.params = {{"email", request.body}, {"password", request.body}};
  return request;
}

void answer(const Handler& handler, const Request& request) {
  Response response;
  try {
    handler(request, response);
  } catch (const Refusal& refusal) {
    require(refusal.status >= 400 && refusal.status < 500, "a refusal blames the request");
  } catch (const json::exception&) {
  }
}

void command(const std::string& body) {
  Faults faults;
  try {
    faults.add(json::parse(body));
  } catch (const Refusal&) {
  } catch (const json::exception&) {
  }
}

}  // namespace
}  // namespace notewick::service

void notewick::fuzz::local_service(std::string_view bytes) {
  using namespace notewick::service;
  static Desk desk;
  if (bytes.size() < 2) return;
  const auto request = requestFrom(bytes, desk.token);
  answer(desk.routes[static_cast<unsigned char>(bytes[0]) % desk.routes.size()].handler, request);
  command(request.body);
  RequestLog log;
  log.add(request);
  require(log.requests().size() == 1, "a request is remembered");
}
