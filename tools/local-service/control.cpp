#include "tools/local-service/control.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

namespace notewick::service {
namespace {

using nlohmann::json;

json requestJson(const Request& request) {
  auto headers = json::object();
  for (const auto& [name, value] : request.headers) headers[name] = value;
  return {{"method", request.method},
          {"path", request.path},
          {"headers", headers},
          {"body", request.body}};
}

json noteJson(const Note& note) {
  return {{"id", note.id},
          {"participantId", note.participant.id},
          {"participantName", note.participant.firstName + " " + note.participant.lastName},
          {"input", note.input},
          {"durationMinutes", note.minutes},
          {"sessionDate", note.sessionDate},
          {"capturedAt", static_cast<double>(note.capturedAt.time_since_epoch().count()) / 1000}};
}

std::vector<Fault> faultsOf(const Request& request) {
  auto body = json::parse(request.body, nullptr, false);
  if (body.is_discarded()) throw std::runtime_error("The body is not JSON");
  if (!body.is_array()) body = json::array({body});
  std::vector<Fault> faults;
  for (const auto& fault : body) faults.push_back(faultFromJson(fault));
  return faults;
}

Answer addFaults(Faults& faults, const Request& request) {
  try {
    for (auto& fault : faultsOf(request)) faults.add(std::move(fault));
    return jsonAnswer(200, json::object());
  } catch (const std::runtime_error& wrong) {
    return errorAnswer(400, wrong.what());
  }
}

}  // namespace

void addControl(Router& router, Faults& faults, RequestLog& log, Notes& notes) {
  router.add("POST", "/faults",
             [&faults](const Request& request) { return addFaults(faults, request); });
  router.add("DELETE", "/faults", [&faults](const Request&) {
    faults.clear();
    return jsonAnswer(200, json::object());
  });
  router.add("GET", "/requests", [&log](const Request&) {
    auto list = json::array();
    for (const auto& request : log.requests()) list.push_back(requestJson(request));
    return jsonAnswer(200, list);
  });
  router.add("DELETE", "/requests", [&log](const Request&) {
    log.clear();
    return jsonAnswer(200, json::object());
  });
  router.add("GET", "/notes", [&notes](const Request&) {
    auto list = json::array();
    for (const auto& note : notes.all()) list.push_back(noteJson(note));
    return jsonAnswer(200, list);
  });
}

}  // namespace notewick::service
