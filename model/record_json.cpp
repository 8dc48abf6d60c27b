#include "model/record_json.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "model/json_text.h"

namespace notewick {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

constexpr double TWO_TO_THE_63 = 9223372036854775808.0;

std::optional<std::int64_t> integer(const json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return {};
    return static_cast<std::int64_t>(number);
  }
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (!value.is_number_float()) return {};
  const double number = value.get<double>();
  // -2^63 itself may be a number further off, rounded.
  const bool fits = number > -TWO_TO_THE_63 && number < TWO_TO_THE_63;
  if (!fits || std::trunc(number) != number) return {};
  return static_cast<std::int64_t>(number);
}

/// Reads the fields of one record; once a field is missing or of another type, the record has
/// failed.
class Fields {
 public:
  explicit Fields(const json& value) : value_(value), complete_(value.is_object()) {}

  [[nodiscard]] bool complete() const { return complete_; }

  void read(const char* key, std::string& field) {
    const json* value = find(key);
    if (value != nullptr && value->is_string()) {
      field = value->get<std::string>();
    } else {
      complete_ = false;
    }
  }

  void read(const char* key, std::int64_t& field) {
    const json* value = find(key);
    const auto number = value != nullptr ? integer(*value) : std::nullopt;
    if (number) field = *number;
    complete_ = complete_ && number.has_value();
  }

  void read(const char* key, Date& field) {
    const json* value = find(key);
    if (value != nullptr && value->is_number() && std::isfinite(value->get<double>())) {
      field = Date(value->get<double>());
    } else {
      complete_ = false;
    }
  }

  void read(const char* key, std::vector<std::string>& field) {
    const json* value = find(key);
    complete_ = complete_ && value != nullptr && value->is_array();
    if (!complete_) return;
    for (const json& element : *value) {
      complete_ = complete_ && element.is_string();
      if (complete_) field.push_back(element.get<std::string>());
    }
  }

  void read(const char* key, std::optional<std::string>& field) {
    const json* value = find(key);
    if (value == nullptr || value->is_null()) return;
    read(key, field.emplace());
  }

 private:
  [[nodiscard]] const json* find(const char* key) const {
    if (!value_.is_object()) return nullptr;
    const auto found = value_.find(key);
    return found == value_.end() ? nullptr : &*found;
  }

  const json& value_;
  bool complete_;
};

ordered_json encode(const Participant& participant) {
  return {{"id", participant.id},
          {"first_name", participant.firstName},
          {"last_name", participant.lastName}};
}

ordered_json encode(const Pending& pending) {
  return {{"id", pending.id},
          {"participant", pending.participant},
          {"day", pending.day},
          {"firstSeen", pending.firstSeen.count()},
          {"lastSeen", pending.lastSeen.count()},
          {"observedMinutes", pending.observedMinutes},
          {"evidence", pending.evidence}};
}

ordered_json encode(const OutboxItem& item) {
  ordered_json value = {{"id", item.id},
                        {"participantId", item.participantId},
                        {"participantName", item.participantName},
                        {"input", item.input},
                        {"minutes", item.minutes},
                        {"sessionDate", item.sessionDate},
                        {"attempts", item.attempts}};
  if (item.lastError) value["lastError"] = *item.lastError;
  return value;
}

bool canBeEncoded(const Participant&) {
  return true;
}
bool canBeEncoded(const OutboxItem&) {
  return true;
}
bool canBeEncoded(const Pending& pending) {
  return std::isfinite(pending.firstSeen.count()) && std::isfinite(pending.lastSeen.count());
}

}  // namespace

template <>
std::optional<Participant> decodeRecord(const json& value) {
  Participant participant;
  Fields fields(value);
  fields.read("id", participant.id);
  fields.read("first_name", participant.firstName);
  fields.read("last_name", participant.lastName);
  if (!fields.complete()) return std::nullopt;
  return participant;
}

template <>
std::optional<Pending> decodeRecord(const json& value) {
  Pending pending{};
  Fields fields(value);
  fields.read("id", pending.id);
  fields.read("participant", pending.participant);
  fields.read("day", pending.day);
  fields.read("firstSeen", pending.firstSeen);
  fields.read("lastSeen", pending.lastSeen);
  fields.read("observedMinutes", pending.observedMinutes);
  fields.read("evidence", pending.evidence);
  if (!fields.complete()) return std::nullopt;
  return pending;
}

template <>
std::optional<OutboxItem> decodeRecord(const json& value) {
  OutboxItem item{};
  Fields fields(value);
  fields.read("id", item.id);
  fields.read("participantId", item.participantId);
  fields.read("participantName", item.participantName);
  fields.read("input", item.input);
  fields.read("minutes", item.minutes);
  fields.read("sessionDate", item.sessionDate);
  fields.read("attempts", item.attempts);
  fields.read("lastError", item.lastError);
  if (!fields.complete()) return std::nullopt;
  return item;
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
    if (!canBeEncoded(record)) return std::nullopt;
    document.push_back(encode(record));
  }
  return document.dump(2, ' ', false, ordered_json::error_handler_t::replace);
}

template std::optional<std::vector<Participant>> decodeRecords(std::string_view);
template std::optional<std::vector<Pending>> decodeRecords(std::string_view);
template std::optional<std::vector<OutboxItem>> decodeRecords(std::string_view);
template std::optional<std::string> encodeRecords(const std::vector<Participant>&);
template std::optional<std::string> encodeRecords(const std::vector<Pending>&);
template std::optional<std::string> encodeRecords(const std::vector<OutboxItem>&);

}  // namespace notewick
