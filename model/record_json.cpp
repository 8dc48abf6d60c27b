#include "model/record_json.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "model/json_text.h"

namespace notewick {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

bool isMinusZero(const json& value) {
  return value.is_number_float() && value == 0.0 && std::signbit(value.get<double>());
}

/// Whole numbers are integers as `parseJson` gives them, all but minus zero.
std::optional<std::int64_t> integer(const json& value) {
  if (isMinusZero(value)) return 0;
  if (!value.is_number_integer()) return std::nullopt;
  const bool fits =
      !value.is_number_unsigned() || std::in_range<std::int64_t>(value.get<std::uint64_t>());
  return fits ? std::optional(value.get<std::int64_t>()) : std::nullopt;
}

template <class Record, class Wanted>
concept RecordIs = std::same_as<std::remove_const_t<Record>, Wanted>;

/// The fields of each record, in the order of the files: one description for reading and writing.
template <class Fields, RecordIs<Participant> Record>
void describe(Fields& fields, Record& record) {
  fields("id", record.id);
  fields("first_name", record.firstName);
  fields("last_name", record.lastName);
}

template <class Fields, RecordIs<Pending> Record>
void describe(Fields& fields, Record& record) {
  fields("id", record.id);
  fields("participant", record.participant);
  fields("day", record.day);
  fields("firstSeen", record.firstSeen);
  fields("lastSeen", record.lastSeen);
  fields("observedMinutes", record.observedMinutes);
  fields("evidence", record.evidence);
}

template <class Fields, RecordIs<OutboxItem> Record>
void describe(Fields& fields, Record& record) {
  fields("id", record.id);
  fields("participantId", record.participantId);
  fields("participantName", record.participantName);
  fields("input", record.input);
  fields("minutes", record.minutes);
  fields("sessionDate", record.sessionDate);
  fields("attempts", record.attempts);
  fields("lastError", record.lastError);
}

/// Reads the fields of one record; once a field is missing or of another type, the record has
/// failed.
class Reader {
 public:
  explicit Reader(const json& value) : value_(value), complete_(value.is_object()) {}

  [[nodiscard]] bool complete() const { return complete_; }

  template <class Field>
  void operator()(const char* key, Field& field) {
    const json* value = find(key);
    complete_ = complete_ && value != nullptr && read(*value, field);
  }

  void operator()(const char* key, std::optional<std::string>& field) {
    const json* value = find(key);
    if (value == nullptr || value->is_null()) return;
    (*this)(key, field.emplace());
  }

 private:
  [[nodiscard]] const json* find(const char* key) const {
    if (!value_.is_object()) return nullptr;
    const auto found = value_.find(key);
    return found == value_.end() ? nullptr : &*found;
  }

  static bool read(const json& value, std::string& field) {
    if (!value.is_string()) return false;
    field = value.get<std::string>();
    return true;
  }

  static bool read(const json& value, std::int64_t& field) {
    const auto number = integer(value);
    if (number) field = *number;
    return number.has_value();
  }

  static bool read(const json& value, Date& field) {
    if (!value.is_number()) return false;
    field = Date(value.get<double>());
    return std::isfinite(field.count());
  }

  static bool read(const json& value, std::vector<std::string>& field) {
    return value.is_array() && std::all_of(value.begin(), value.end(), [&](const json& element) {
             return read(element, field.emplace_back());
           });
  }

  const json& value_;
  bool complete_;
};

/// Writes the fields of one record; fails for a date that is not a finite number.
class Writer {
 public:
  [[nodiscard]] std::optional<ordered_json> result() && {
    if (!complete_) return std::nullopt;
    return std::move(value_);
  }

  template <class Field>
  void operator()(const char* key, const Field& field) {
    value_[key] = field;
  }

  void operator()(const char* key, const Date& field) {
    complete_ = complete_ && std::isfinite(field.count());
    value_[key] = field.count();
  }

  void operator()(const char* key, const std::optional<std::string>& field) {
    if (field) value_[key] = *field;
  }

 private:
  ordered_json value_ = ordered_json::object();
  bool complete_ = true;
};

}  // namespace

template <class Record>
std::optional<Record> decodeRecord(const json& value) {
  Record record{};
  Reader reader(value);
  describe(reader, record);
  if (!reader.complete()) return std::nullopt;
  return record;
}

template <class Record>
std::optional<std::vector<Record>> decodeRecords(std::string_view text) {
  const auto document = parseJson(text);
  if (!document || !document->is_array()) return std::nullopt;
  std::vector<Record> records;
  for (const json& element : *document) {
    auto record = decodeRecord<Record>(element);
    if (!record) return std::nullopt;
    records.push_back(std::move(*record));
  }
  return records;
}

template <class Record>
std::optional<std::string> encodeRecords(const std::vector<Record>& records) {
  ordered_json document = ordered_json::array();
  for (const Record& record : records) {
    Writer writer;
    describe(writer, record);
    auto value = std::move(writer).result();
    if (!value) return std::nullopt;
    document.push_back(std::move(*value));
  }
  return document.dump(2, ' ', false, ordered_json::error_handler_t::replace);
}

template std::optional<Participant> decodeRecord(const json&);
template std::optional<Pending> decodeRecord(const json&);
template std::optional<OutboxItem> decodeRecord(const json&);
template std::optional<std::vector<Participant>> decodeRecords(std::string_view);
template std::optional<std::vector<Pending>> decodeRecords(std::string_view);
template std::optional<std::vector<OutboxItem>> decodeRecords(std::string_view);
template std::optional<std::string> encodeRecords(const std::vector<Participant>&);
template std::optional<std::string> encodeRecords(const std::vector<Pending>&);
template std::optional<std::string> encodeRecords(const std::vector<OutboxItem>&);

}  // namespace notewick
