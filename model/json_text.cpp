#include "model/json_text.h"

namespace notewick {
namespace {

constexpr int DEEPEST_NESTING = 512;

struct NestsTooDeep {};

}  // namespace

std::optional<nlohmann::json> parseJson(std::string_view text) {
  using json = nlohmann::json;
  if (text.find('\0') != std::string_view::npos) return std::nullopt;  // would end it silently
  const auto watchDepth = [](int depth, json::parse_event_t event, json&) {
    const bool opens =
        event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
    if (opens && depth >= DEEPEST_NESTING) throw NestsTooDeep();
    return true;
  };
  try {
    json value = json::parse(text, watchDepth, false);
    if (value.is_discarded()) return std::nullopt;
    return value;
  } catch (const NestsTooDeep&) {
    return std::nullopt;
  }
}

}  // namespace notewick
