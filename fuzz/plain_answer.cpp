#include "fuzz/plain_answer.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace notewick {
namespace {

using nlohmann::json;

/// The tree of the library's own reading; a discarded value when the text is not to be read.
json treeOf(const std::string& text) {
  constexpr int DEEPEST = 512;
  bool tooDeep = false;
  const auto watchDepth = [&](int depth, json::parse_event_t event, const json& /*value*/) {
    const bool opens =
        event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
    tooDeep = tooDeep || (opens && depth >= DEEPEST);
    return true;
  };
  json tree = json::parse(text, watchDepth, false);
  const bool hasZeroByte = text.find('\0') != std::string::npos;
  return tooDeep || hasZeroByte ? json(json::value_t::discarded) : tree;
}

/// What stands under a key; null when nothing does.
json at(const json& object, const char* key) {
  return object.value(key, json());
}

std::optional<std::string> textAt(const json& object, const char* key) {
  const json value = at(object, key);
  return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
}

std::optional<std::vector<Participant>> participantsIn(const json& list) {
  const auto isObject = [](const json& entry) { return entry.is_object(); };
  if (!list.is_array() || !std::ranges::all_of(list, isObject)) return std::nullopt;
  std::vector<Participant> participants;
  for (const json& entry : list) {
    const auto id = textAt(entry, "id");
    const auto first = textAt(entry, "first_name");
    const auto last = textAt(entry, "last_name");
    if (id && first && last) participants.push_back({*id, *first, *last});
  }
  return participants;
}

}  // namespace

AnswerBody plainlyRead(const std::string& text) {
  const json tree = treeOf(text);
  if (!tree.is_object()) return {};
  AnswerBody body;
  body.error = textAt(tree, "error");
  body.accessToken = textAt(tree, "accessToken");
  body.refreshToken = textAt(tree, "refreshToken");
  if (const json expiry = at(tree, "expiresAt"); expiry.is_number())
    body.expiresAt = expiry.get<double>();
  if (const json user = at(tree, "user"); user.is_object()) body.user = {textAt(user, "email")};
  body.participants = participantsIn(at(tree, "participants"));
  body.capturedId = textAt(tree, "capturedId");
  return body;
}

}  // namespace notewick
