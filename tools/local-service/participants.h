#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace notewick::service {

/// A person of the caseworker's, as the service lists them.
struct Participant {
  std::string id;
  std::string firstName;
  std::string lastName;

  bool operator==(const Participant&) const = default;
};

using Participants = std::vector<Participant>;

/// The wire form: [{"id", "first_name", "last_name"}, ...], all text; other keys are left out.
[[nodiscard]] nlohmann::json participantsJson(const Participants& participants);

/// Throws std::runtime_error, naming the first entry that is not of the wire form or whose id is
/// empty or taken.
[[nodiscard]] Participants participantsFromJson(const nlohmann::json& list);

/// Reads the wire form from a file. Throws std::runtime_error naming the file and what is wrong.
[[nodiscard]] Participants readParticipants(const std::filesystem::path& file);

/// Twelve invented people, for accounts that bring no list.
[[nodiscard]] Participants demonstrationParticipants();

}  // namespace notewick::service
