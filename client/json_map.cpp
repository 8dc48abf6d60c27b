#include "client/json_map.h"

#include <algorithm>

#include "model/json_text.h"
#include "model/record_json.h"

namespace notewick {

using nlohmann::json;

json parseMap(std::string_view body) {
  auto value = parseJson(body);
  return value && value->is_object() ? std::move(*value) : json::object();
}

std::optional<std::string> textAt(const json& map, const char* key) {
  const auto found = map.find(key);
  if (found == map.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

Result<std::vector<Participant>> participantsIn(const json& map) {
  const auto entries = map.find("participants");
  const bool usable =
      entries != map.end() && entries->is_array() &&
      std::all_of(entries->begin(), entries->end(), [](const json& e) { return e.is_object(); });
  if (!usable) return tl::unexpected(VELKError::api("Malformed participants response"));
  std::vector<Participant> participants;
  for (const json& entry : *entries) {
    auto participant = decodeRecord<Participant>(entry);
    if (participant) participants.push_back(std::move(*participant));
  }
  return participants;
}

}  // namespace notewick
