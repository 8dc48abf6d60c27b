#include "tools/local-service/participants.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace notewick::service {
namespace {

using nlohmann::json;

std::string textOf(const json& entry, const char* key) {
  const auto found = entry.find(key);
  if (found == entry.end() || !found->is_string()) {
    throw std::runtime_error(std::string("\"") + key + "\" is not text");
  }
  return found->get<std::string>();
}

Participant participantFromJson(const json& entry) {
  if (!entry.is_object()) throw std::runtime_error("not an object");
  Participant participant{textOf(entry, "id"), textOf(entry, "first_name"),
                          textOf(entry, "last_name")};
  if (participant.id.empty()) throw std::runtime_error("\"id\" is empty");
  return participant;
}

}  // namespace

json participantsJson(const Participants& participants) {
  auto list = json::array();
  for (const auto& [id, firstName, lastName] : participants) {
    list.push_back({{"id", id}, {"first_name", firstName}, {"last_name", lastName}});
  }
  return list;
}

Participants participantsFromJson(const json& list) {
  if (!list.is_array()) throw std::runtime_error("participants: not a list");
  Participants participants;
  std::set<std::string> ids;
  for (std::size_t at = 0; at < list.size(); ++at) {
    try {
      participants.push_back(participantFromJson(list[at]));
      if (!ids.insert(participants.back().id).second) throw std::runtime_error("\"id\" is taken");
    } catch (const std::runtime_error& wrong) {
      throw std::runtime_error("participants: entry " + std::to_string(at + 1) + ": " +
                               wrong.what());
    }
  }
  return participants;
}

Participants readParticipants(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error(file.string() + ": cannot be read");
  const auto list = json::parse(stream, nullptr, false);
  if (list.is_discarded()) throw std::runtime_error(file.string() + ": not JSON");
  try {
    return participantsFromJson(list);
  } catch (const std::runtime_error& wrong) {
    throw std::runtime_error(file.string() + ": " + wrong.what());
  }
}

Participants demonstrationParticipants() {
  return {{"p-101", "Tobias", "Hargreave"}, {"p-102", "Lena", "O'Keefe"},
          {"p-103", "Amara", "Osei"},       {"p-104", "José", "Villanueva"},
          {"p-105", "Zoë", "Lindqvist"},    {"p-106", "Mai", "Nguyễn"},
          {"p-107", "Rene", "Kowalski"},    {"p-108", "Hannah", "Weißbach"},
          {"p-109", "Dilan", "Yıldız"},     {"p-110", "Sofia", "Papadaki"},
          {"p-111", "Mikhail", "Sorokin"},  {"p-112", "Grace", "Whitlock-Adeyemi"}};
}

}  // namespace notewick::service
