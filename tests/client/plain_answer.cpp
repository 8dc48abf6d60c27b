#include "tests/client/plain_answer.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>

namespace notewick {
namespace {

using nlohmann::json;

/// The tree of the library's own reading; a discarded value when the text is not to be read.
json treeOf(const std::string& text) {
  constexpr int deepest = 512;
  bool tooDeep = false;
  const auto watchDepth = [&](int depth, json::parse_event_t event, const json& /*value*/) {
    const bool opens =
        event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
    tooDeep = tooDeep || (opens && depth >= deepest);
    return true;
  };
  json tree = json::parse(text, watchDepth, false);
  const bool hasZeroByte = text.find('\0') != std::string::npos;
  return tooDeep || hasZeroByte ? json(json::value_t::discarded) : tree;
}

std::optional<std::string> textAt(const json& object, std::string_view key) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

std::optional<double> numberAt(const json& object, std::string_view key) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_number()) return std::nullopt;
  return found->get<double>();
}

std::optional<AnswerBody::User> userIn(const json& object) {
  const auto found = object.find("user");
  if (found == object.end() || !found->is_object()) return std::nullopt;
  return AnswerBody::User{textAt(*found, "email")};
}

std::optional<std::vector<Participant>> participantsIn(const json& object) {
  const auto found = object.find("participants");
  if (found == object.end() || !found->is_array()) return std::nullopt;
  if (!std::ranges::all_of(*found, [](const json& entry) { return entry.is_object(); })) return {};
  std::vector<Participant> participants;
  for (const json& entry : *found) {
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
  return {textAt(tree, "error"),
          textAt(tree, "accessToken"),
          textAt(tree, "refreshToken"),
          numberAt(tree, "expiresAt"),
          userIn(tree),
          participantsIn(tree),
          textAt(tree, "capturedId")};
}

}  // namespace notewick
