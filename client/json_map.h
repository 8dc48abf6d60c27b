#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/velk_error.h"
#include "model/records.h"

namespace notewick {

/// Answers of the service, read with suspicion. Pure functions.

/// The JSON object that `body` holds; an empty one when it holds no JSON or no object.
[[nodiscard]] nlohmann::json parseMap(std::string_view body);

/// The text under `key`; absent when there is none or it is no text.
[[nodiscard]] std::optional<std::string> textAt(const nlohmann::json& map, const char* key);

/// The participants of an answer, in its order. An entry without the three texts is skipped; an
/// answer without an array of objects is a failure.
[[nodiscard]] Result<std::vector<Participant>> participantsIn(const nlohmann::json& map);

}  // namespace notewick
