#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/records.h"

namespace notewick {

/// The JSON forms of the three records (docs/files.md). Every key is required when decoding but
/// "lastError"; unknown keys are ignored. Integers are any integral number that fits 64 bits (12.0
/// counts, Booleans do not); dates are any finite number. Pure functions.

/// One record from a JSON value as `parseJson` gives it; absent when it is no object, or a key is
/// missing or of another type.
template <class Record>
[[nodiscard]] std::optional<Record> decodeRecord(const nlohmann::json& value);

/// A whole list from the text of a file; absent when the text is no JSON array of this record: one
/// bad element fails the whole document.
template <class Record>
[[nodiscard]] std::optional<std::vector<Record>> decodeRecords(std::string_view text);

/// A list as indented JSON, keys in the records' order. Invalid UTF-8 is replaced; absent when a
/// date is not a finite number, which JSON cannot say.
template <class Record>
[[nodiscard]] std::optional<std::string> encodeRecords(const std::vector<Record>& records);

}  // namespace notewick
