#include "tools/local-service/faults.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace notewick::service {

using nlohmann::json;

NLOHMANN_JSON_SERIALIZE_ENUM(Cut, {{Cut::none, nullptr},
                                   {Cut::before, "before"},
                                   {Cut::after, "after"},
                                   {Cut::middle, "middle"}})
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(Fault, path, times, rate, delay, status, body,
                                                headers, cut)

namespace {

/// Every field has to read back as it was given: others are unknown or of the wrong type.
Fault faultOf(const json& form) {
  const auto fault = form.get<Fault>();
  const json understood = fault;
  for (const auto& [field, value] : form.items()) {
    if (understood.value(field, json()) != value || value.is_null()) {
      throw Refusal(400, "\"" + field + "\" cannot be " + value.dump());
    }
  }
  const bool isStatus = fault.status == 0 || (fault.status >= 100 && fault.status <= 999);
  const bool isPart = fault.rate >= 0 && fault.rate <= 1;
  if (isStatus && isPart && fault.delay >= 0 && fault.times > 0) return fault;
  throw Refusal(400, form.dump() + " has a value out of its range");
}

void answerAs(const Fault& fault, httplib::Response& response) {
  response.status = fault.status == 0 ? 200 : fault.status;
  const auto& body = fault.body;
  const auto text = body.is_string() ? body.get<std::string>() : body.is_null() ? "" : body.dump();
  response.set_content(text, "application/json");
  for (const auto& [name, value] : fault.headers) response.set_header(name, value);
}

/// Lets the connection end before its body does: the library closes it where a body breaks off.
void cutOff(httplib::Response& response, std::size_t sent) {
  auto body = std::exchange(response.body, "");
  response.headers.erase("Content-Type");
  response.set_content_provider(
      std::max<std::size_t>(body.size(), 1), "application/json",
      [body = body.substr(0, sent)](std::size_t, std::size_t, httplib::DataSink& sink) {
        sink.write(body.data(), body.size());
        return false;
      });
}

}  // namespace

void Faults::add(const json& form) {
  std::vector<Fault> added;
  const auto forms = form.is_array() ? form : json::array({form});
  std::ranges::transform(forms, std::back_inserter(added), faultOf);
  const std::lock_guard lock(mutex_);
  std::ranges::move(added, std::back_inserter(faults_));
}

void Faults::clear() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
}

void Faults::pass(const httplib::Request& request, httplib::Response& response,
                  const Handler& handler) {
  const auto fault = take(request.path);
  if (!fault) return handler(request, response);
  delay(fault->delay);
  if (fault->status != 0 || !fault->body.is_null() || !fault->headers.empty()) {
    answerAs(*fault, response);
  } else if (fault->cut != Cut::before) {
    handler(request, response);
  }
  if (fault->cut == Cut::none) return;
  cutOff(response, fault->cut == Cut::middle ? response.body.size() / 2 : 0);
}

void Faults::delay(double seconds) const {
  using namespace std::chrono;
  constexpr duration<double> SLICE = 10ms;
  for (duration<double> left(seconds); left > 0s && !delaysEnded_; left -= SLICE) {
    std::this_thread::sleep_for(std::min(left, SLICE));
  }
}

std::optional<Fault> Faults::take(const std::string& path) {
  const std::lock_guard lock(mutex_);
  const auto hit = std::ranges::find_if(faults_, [&](const Fault& fault) {
    if (!fault.path.empty() && fault.path != path) return false;
    return fault.rate >= 1 || std::uniform_real_distribution{}(dice_) < fault.rate;
  });
  if (hit == faults_.end()) return std::nullopt;
  auto fault = *hit;
  if (--hit->times == 0) faults_.erase(hit);
  return fault;
}

}  // namespace notewick::service
