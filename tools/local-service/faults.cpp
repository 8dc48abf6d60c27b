#include "tools/local-service/faults.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace notewick::service {
namespace {

using nlohmann::json;

[[noreturn]] void refuse(const std::string& field, const std::string& needed) {
  throw std::runtime_error("\"" + field + "\" must be " + needed);
}

std::string textOf(const std::string& field, const json& value) {
  if (!value.is_string()) refuse(field, "text");
  return value.get<std::string>();
}

double numberOf(const std::string& field, const json& value, double least, double most) {
  if (!value.is_number() || value < least || value > most) {
    refuse(field, "a number in its range");
  }
  return value.get<double>();
}

std::string garbage(std::size_t size) {
  std::mt19937 source(static_cast<std::mt19937::result_type>(size));
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(source() & 0xff);
  return bytes;
}

void readCut(Fault& fault, const std::string& value) {
  if (value == "before") {
    fault.ignoresRequest = true;
    fault.cut = Cut::WithoutAnswer;
  } else if (value == "after") {
    fault.cut = Cut::WithoutAnswer;
  } else if (value == "middle") {
    fault.cut = Cut::MidBody;
  } else {
    refuse("cut", "\"before\", \"after\" or \"middle\"");
  }
}

void readHeaders(Answer& answer, const json& value) {
  if (!value.is_object()) refuse("headers", "an object of texts");
  for (const auto& [name, text] : value.items()) {
    answer.headers.emplace_back(name, textOf("headers", text));
  }
}

Answer& replacement(Fault& fault) {
  if (!fault.answer) fault.answer = Answer{.contentType = "application/json"};
  return *fault.answer;
}

void readField(Fault& fault, const std::string& field, const json& value) {
  constexpr double MANY = 1e9, A_DAY = 86'400, LONGEST_GARBAGE = 1 << 24;
  if (field == "path") {
    fault.path = textOf(field, value);
  } else if (field == "times") {
    fault.times = static_cast<std::uint64_t>(numberOf(field, value, 1, MANY));
  } else if (field == "rate") {
    fault.rate = numberOf(field, value, 0, 1);
  } else if (field == "delay") {
    const std::chrono::duration<double> delay(numberOf(field, value, 0, A_DAY));
    fault.delay = std::chrono::round<std::chrono::milliseconds>(delay);
  } else if (field == "cut") {
    readCut(fault, textOf(field, value));
  } else if (field == "status") {
    replacement(fault).status = static_cast<int>(numberOf(field, value, 100, 999));
  } else if (field == "body") {
    replacement(fault).body = value.is_string() ? value.get<std::string>() : value.dump();
  } else if (field == "garbage") {
    const auto size = numberOf(field, value, 1, LONGEST_GARBAGE);
    replacement(fault).body = garbage(static_cast<std::size_t>(size));
  } else if (field == "contentType") {
    replacement(fault).contentType = textOf(field, value);
  } else if (field == "headers") {
    readHeaders(replacement(fault), value);
  } else {
    throw std::runtime_error("\"" + field + "\" is not known");
  }
}

}  // namespace

Fault faultFromJson(const json& json) {
  if (!json.is_object()) throw std::runtime_error("a fault must be an object");
  Fault fault;
  for (const auto& [field, value] : json.items()) readField(fault, field, value);
  return fault;
}

void Faults::add(Fault fault) {
  const std::lock_guard lock(mutex_);
  faults_.push_back(std::move(fault));
}

void Faults::clear() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
}

std::optional<Fault> Faults::take(const Request& request) {
  const std::lock_guard lock(mutex_);
  const auto hit = std::ranges::find_if(faults_, [&](const Fault& fault) {
    if (!fault.path.empty() && fault.path != request.path) return false;
    return fault.rate >= 1 || std::uniform_real_distribution{}(dice_) < fault.rate;
  });
  if (hit == faults_.end()) return std::nullopt;
  auto fault = *hit;
  if (hit->times && --*hit->times == 0) faults_.erase(hit);
  return fault;
}

Answer suffer(const Fault& fault, const Request& request, const Handler& next, const Pause& pause) {
  pause.wait(fault.delay);
  Answer answer;
  if (!fault.ignoresRequest) answer = fault.answer ? *fault.answer : next(request);
  answer.cut = fault.cut;
  return answer;
}

}  // namespace notewick::service
