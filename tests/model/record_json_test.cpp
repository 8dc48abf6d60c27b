#include "model/record_json.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "model/json_text.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

const json PARTICIPANT = {{"id", "1"}, {"first_name", "Lena"}, {"last_name", "O'Keefe"}};
const json PENDING = {{"id", "A"},
                      {"participant", "Lena O'Keefe"},
                      {"day", "2024-05-02"},
                      {"firstSeen", 736333200.25},
                      {"lastSeen", 736333260},
                      {"observedMinutes", 12},
                      {"evidence", {"Inbox", "Plan.docx"}}};
const json OUTBOX_ITEM = {{"id", "B"},
                          {"participantId", "1"},
                          {"participantName", "Lena O'Keefe"},
                          {"input", "Phoned"},
                          {"minutes", 30},
                          {"sessionDate", "2024-05-02"},
                          {"attempts", 2},
                          {"lastError", "Server busy (503)"}};

json with(json record, const std::string& key, json value) {
  record[key] = std::move(value);
  return record;
}

json without(json record, const std::string& key) {
  record.erase(key);
  return record;
}

/// The text of a list of this record, with a number written so.
std::string withNumber(json record, const std::string& key, const std::string& number) {
  record[key] = "here";
  auto text = json::array({std::move(record)}).dump();
  const std::string place = "\"here\"";
  return text.replace(text.find(place), place.size(), number);
}

/// What an encoded list holds, with the keys in the order of the text.
template <class Record>
nlohmann::ordered_json encoded(const std::vector<Record>& records) {
  return nlohmann::ordered_json::parse(encodeRecords(records).value());
}

std::vector<std::string> keysOf(const nlohmann::ordered_json& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : object.items()) keys.push_back(key);
  return keys;
}

TEST(RecordJson, ReadsAParticipant) {
  EXPECT_EQ(decodeRecord<Participant>(PARTICIPANT), (Participant{"1", "Lena", "O'Keefe"}));
}

TEST(RecordJson, ReadsAPending) {
  const auto pending = decodeRecord<Pending>(PENDING).value();
  EXPECT_EQ(pending.id, "A");
  EXPECT_EQ(pending.participant, "Lena O'Keefe");
  EXPECT_EQ(pending.day, "2024-05-02");
  EXPECT_EQ(pending.firstSeen, Date(736333200.25));
  EXPECT_EQ(pending.lastSeen, Date(736333260));
  EXPECT_EQ(pending.observedMinutes, 12);
  EXPECT_THAT(pending.evidence, ElementsAre("Inbox", "Plan.docx"));
}

TEST(RecordJson, ReadsAnOutboxItem) {
  const auto item = decodeRecord<OutboxItem>(OUTBOX_ITEM).value();
  EXPECT_EQ(item.id, "B");
  EXPECT_EQ(item.participantId, "1");
  EXPECT_EQ(item.participantName, "Lena O'Keefe");
  EXPECT_EQ(item.input, "Phoned");
  EXPECT_EQ(item.minutes, 30);
  EXPECT_EQ(item.sessionDate, "2024-05-02");
  EXPECT_EQ(item.attempts, 2);
  EXPECT_EQ(item.lastError, "Server busy (503)");
}

/// A key of a record with a value of the right type.
struct Key {
  const char* record;
  json whole;
  std::string name;
  bool (*decodes)(const json&);
};

template <class Record>
bool decodes(const json& value) {
  return decodeRecord<Record>(value).has_value();
}

std::vector<Key> requiredKeys() {
  std::vector<Key> keys;
  for (const auto& [name, value] : PARTICIPANT.items())
    keys.push_back({"Participant", PARTICIPANT, name, decodes<Participant>});
  for (const auto& [name, value] : PENDING.items())
    keys.push_back({"Pending", PENDING, name, decodes<Pending>});
  for (const auto& [name, value] : OUTBOX_ITEM.items())
    if (name != "lastError") keys.push_back({"OutboxItem", OUTBOX_ITEM, name, decodes<OutboxItem>});
  return keys;
}

TEST(RecordJson, RequiresEveryKeyButLastError) {
  ASSERT_EQ(requiredKeys().size(), 3u + 7u + 7u);
  for (const auto& key : requiredKeys()) {
    ASSERT_TRUE(key.decodes(key.whole));
    EXPECT_FALSE(key.decodes(without(key.whole, key.name))) << key.record << "." << key.name;
  }
}

TEST(RecordJson, RefusesAValueOfAnotherType) {
  const json values = {nullptr, true, 1.5, "text", json::array({1}), json::object()};
  for (const auto& key : requiredKeys()) {
    const auto& right = key.whole.at(key.name);
    for (const auto& value : values) {
      const bool sameType = right.is_number_integer() ? false
                            : right.is_number()       ? value.is_number()
                                                      : value.type() == right.type();
      const bool badList = value.is_array();
      if (sameType && !badList) continue;
      if (key.name == "lastSeen" && value.is_number()) continue;
      EXPECT_FALSE(key.decodes(with(key.whole, key.name, value)))
          << key.record << "." << key.name << " = " << value;
    }
  }
}

TEST(RecordJson, KeysAreExactToTheLetter) {
  for (const auto& key : requiredKeys()) {
    auto name = key.name;
    name.front() = static_cast<char>(std::toupper(name.front()));
    const auto renamed = with(without(key.whole, key.name), name, key.whole.at(key.name));
    EXPECT_FALSE(key.decodes(renamed)) << key.record << "." << name;
  }
  EXPECT_FALSE(decodes<Participant>({{"id", "1"}, {"firstName", "A"}, {"lastName", "B"}}));
  EXPECT_FALSE(
      decodes<OutboxItem>(with(without(OUTBOX_ITEM, "participantId"), "participant_id", "1")));
}

TEST(RecordJson, AParticipantWithoutFirstNameDoesNotDecode) {
  EXPECT_FALSE(decodes<Participant>({{"id", "1"}, {"last_name", "O'Keefe"}}));
}

TEST(RecordJson, IgnoresUnknownKeys) {
  EXPECT_TRUE(decodes<Participant>(with(PARTICIPANT, "email", json::array({1}))));
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "colour", nullptr)));
  EXPECT_TRUE(decodes<OutboxItem>(with(OUTBOX_ITEM, "colour", 7)));
}

TEST(RecordJson, AnOutboxItemWithoutLastErrorHasNone) {
  const auto item = decodeRecord<OutboxItem>(without(OUTBOX_ITEM, "lastError"));
  ASSERT_TRUE(item);
  EXPECT_FALSE(item->lastError);
}

TEST(RecordJson, ANullLastErrorIsNone) {
  const auto item = decodeRecord<OutboxItem>(with(OUTBOX_ITEM, "lastError", nullptr));
  ASSERT_TRUE(item);
  EXPECT_FALSE(item->lastError);
  EXPECT_FALSE(decodes<OutboxItem>(with(OUTBOX_ITEM, "lastError", 7)));
  EXPECT_FALSE(decodes<OutboxItem>(with(OUTBOX_ITEM, "lastError", false)));
}

TEST(RecordJson, AnOutboxItemWithoutAttemptsDoesNotDecode) {
  EXPECT_FALSE(decodes<OutboxItem>(without(OUTBOX_ITEM, "attempts")));
}

TEST(RecordJson, IntegersAreIntegralNumbersOf64Bits) {
  const auto minutes = [](const std::string& number) -> std::optional<std::int64_t> {
    const auto list = decodeRecords<OutboxItem>(withNumber(OUTBOX_ITEM, "minutes", number));
    return list ? std::optional(list->front().minutes) : std::nullopt;
  };
  EXPECT_EQ(minutes("12.0"), 12);
  EXPECT_EQ(minutes("1.2e1"), 12);
  EXPECT_EQ(minutes("-0.0"), 0);
  EXPECT_EQ(minutes("-3"), -3);
  EXPECT_EQ(minutes("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(minutes("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(minutes("-9223372036854775808.0"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(minutes("9007199254740993.0"), 9007199254740993);
  EXPECT_EQ(minutes("1e3"), 1000);
  EXPECT_EQ(minutes("0.0"), 0);
  EXPECT_FALSE(minutes("9223372036854775808"));
  EXPECT_FALSE(minutes("9223372036854775808.0"));
  EXPECT_FALSE(minutes("18446744073709551615"));
  EXPECT_FALSE(minutes("18446744073709551616"));
  EXPECT_FALSE(minutes("-9223372036854775809"));
  EXPECT_FALSE(minutes("9.3e18"));
  EXPECT_FALSE(minutes("1e300"));
  EXPECT_FALSE(minutes("1e400"));
  EXPECT_FALSE(minutes("12.5"));
  EXPECT_FALSE(minutes("12.00000000000000000001"));
  EXPECT_FALSE(minutes("1e-400"));
  EXPECT_FALSE(minutes("-1e-400"));
}

TEST(RecordJson, BooleansAreNoNumbers) {
  EXPECT_FALSE(decodes<OutboxItem>(with(OUTBOX_ITEM, "attempts", false)));
  EXPECT_FALSE(decodes<OutboxItem>(with(OUTBOX_ITEM, "minutes", true)));
  EXPECT_FALSE(decodes<Pending>(with(PENDING, "firstSeen", true)));
}

TEST(RecordJson, DatesAreAnyFiniteNumber) {
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "firstSeen", -1)));
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "firstSeen", 1e300)));
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "firstSeen", 18446744073709551615u)));
  EXPECT_FALSE(decodes<Pending>(with(PENDING, "firstSeen", "736333200")));
  EXPECT_FALSE(decodes<Pending>(with(PENDING, "firstSeen", "2024-05-02T09:00:00Z")));
}

TEST(RecordJson, EvidenceHoldsTextsOnly) {
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "evidence", json::array())));
  EXPECT_TRUE(decodes<Pending>(with(PENDING, "evidence", {"a", "b", "c", "d"})));
  EXPECT_FALSE(decodes<Pending>(with(PENDING, "evidence", {"a", nullptr})));
  EXPECT_FALSE(decodes<Pending>(with(PENDING, "evidence", {"a", json::array()})));
}

TEST(RecordJson, OneBadElementFailsTheWholeList) {
  EXPECT_TRUE(decodeRecords<Participant>(json::array({PARTICIPANT, PARTICIPANT}).dump()));
  EXPECT_FALSE(decodeRecords<Participant>(
      json::array({PARTICIPANT, without(PARTICIPANT, "id"), PARTICIPANT}).dump()));
  EXPECT_FALSE(decodeRecords<Participant>(json::array({PARTICIPANT, nullptr}).dump()));
  EXPECT_FALSE(decodeRecords<Participant>(json::array({"Lena"}).dump()));
}

TEST(RecordJson, TheTopLevelIsAnArray) {
  EXPECT_FALSE(decodeRecords<Pending>("{}"));
  EXPECT_FALSE(decodeRecords<Pending>(PENDING.dump()));
  EXPECT_FALSE(decodeRecords<Pending>("null"));
  EXPECT_FALSE(decodeRecords<Pending>(""));
  EXPECT_THAT(decodeRecords<Pending>("[]").value(), IsEmpty());
}

TEST(RecordJson, AListCutAnywhereDoesNotDecode) {
  const auto whole = json::array({PENDING, PENDING}).dump(2);
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(decodeRecords<Pending>(whole.substr(0, length))) << length;
  EXPECT_TRUE(decodeRecords<Pending>(whole + "   "));
}

TEST(RecordJson, HostileTextsDoNotDecode) {
  const auto record = OUTBOX_ITEM.dump();
  EXPECT_FALSE(decodeRecords<OutboxItem>(std::string(100'000, '[')));
  EXPECT_FALSE(decodeRecords<OutboxItem>("[" + record + ",{\"x\":" + std::string(600, '[') +
                                         std::string(600, ']') + "}]"));
  EXPECT_FALSE(decodeRecords<OutboxItem>("[" + record + "]\xFF"));
  EXPECT_FALSE(
      decodeRecords<Participant>("[{\"id\":\"\xFF\",\"first_name\":\"A\",\"last_name\":\"B\"}]"));
  EXPECT_FALSE(
      decodeRecords<Participant>(R"([{"id":"1","first_name":"A","last_name":"B","age":1e999}])"));
  EXPECT_TRUE(decodeRecords<OutboxItem>("\xEF\xBB\xBF[" + record + "]"));
}

TEST(RecordJson, OfADoubledKeyTheLastCounts) {
  const auto list =
      decodeRecords<Participant>(R"([{"id":7,"first_name":"A","last_name":"B","id":"2"}])");
  ASSERT_TRUE(list);
  EXPECT_EQ(list->front().id, "2");
  EXPECT_FALSE(
      decodeRecords<Participant>(R"([{"id":"2","first_name":"A","last_name":"B","id":7}])"));
}

TEST(RecordJson, KeepsListOrder) {
  const std::vector<Participant> list = {{"2", "B", "B"}, {"1", "A", "A"}, {"2", "B", "B"}};
  EXPECT_EQ(decodeRecords<Participant>(encodeRecords(list).value()), list);
}

TEST(RecordJson, WritesParticipantsWithSnakeCaseNames) {
  const auto written = encoded<Participant>({{"1", "Lena", "O'Keefe"}});
  EXPECT_THAT(keysOf(written.at(0)), ElementsAre("id", "first_name", "last_name"));
  EXPECT_EQ(json(written.at(0)), PARTICIPANT);
}

TEST(RecordJson, WritesEveryFieldOfAPending) {
  const auto written = encoded<Pending>({decodeRecord<Pending>(PENDING).value()});
  EXPECT_THAT(keysOf(written.at(0)), ElementsAre("id", "participant", "day", "firstSeen",
                                                 "lastSeen", "observedMinutes", "evidence"));
  EXPECT_EQ(json(written.at(0)), PENDING);
}

TEST(RecordJson, WritesLastErrorOnlyWhenThereIsOne) {
  auto item = decodeRecord<OutboxItem>(OUTBOX_ITEM).value();
  EXPECT_THAT(keysOf(encoded<OutboxItem>({item}).at(0)),
              ElementsAre("id", "participantId", "participantName", "input", "minutes",
                          "sessionDate", "attempts", "lastError"));
  item.lastError.reset();
  EXPECT_THAT(keysOf(encoded<OutboxItem>({item}).at(0)),
              ElementsAre("id", "participantId", "participantName", "input", "minutes",
                          "sessionDate", "attempts"));
}

TEST(RecordJson, DatesComeBackToTheLastBit) {
  for (const double seconds : {0.0, -0.0, -0.1, 736333200.1, 736333200.123456789, 0.1 + 0.2, 1e-300,
                               std::nextafter(736333200.0, 1e9), 1.7976931348623157e308}) {
    auto pending = decodeRecord<Pending>(PENDING).value();
    pending.firstSeen = Date(seconds);
    const auto back = decodeRecords<Pending>(encodeRecords<Pending>({pending}).value()).value();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(back.front().firstSeen.count()),
              std::bit_cast<std::uint64_t>(seconds))
        << seconds;
  }
}

TEST(RecordJson, DatesAreReadToTheLastBit) {
  for (const std::string text :
       {"0", "-0.0", "736333200.1", "736333200.0", "9007199254740993", "9007199254740993.0", "1e22",
        "123456789012345678901234567890", "5e-324", "1e-400", "1.7976931348623157e308"}) {
    const auto list = decodeRecords<Pending>(withNumber(PENDING, "firstSeen", text));
    ASSERT_TRUE(list) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(list->front().firstSeen.count()),
              std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
        << text;
  }
}

TEST(RecordJson, TheLargestAndSmallestIntegersComeBack) {
  using Limits = std::numeric_limits<std::int64_t>;
  for (const auto number : {Limits::min(), Limits::max()}) {
    auto item = decodeRecord<OutboxItem>(OUTBOX_ITEM).value();
    item.minutes = number;
    const auto back = decodeRecords<OutboxItem>(encodeRecords<OutboxItem>({item}).value()).value();
    EXPECT_EQ(back.front().minutes, number);
  }
}

TEST(RecordJson, AnEmptyListIsAnEmptyArray) {
  EXPECT_EQ(parseJson(encodeRecords<Pending>({}).value()), json::array());
}

TEST(RecordJson, ListsAreIndented) {
  const auto text = encodeRecords<Participant>({{"1", "Lena", "O'Keefe"}}).value();
  EXPECT_NE(text.find("\n    \"first_name\""), std::string::npos) << text;
}

TEST(RecordJson, ReplacesInvalidUtf8WhenWriting) {
  const auto text = encodeRecords<Participant>({{"1", "Le\xFFna", "O'Keefe"}}).value();
  EXPECT_EQ(decodeRecords<Participant>(text).value().front().firstName, "Le\uFFFDna");
}

TEST(RecordJson, ADateThatJsonCannotSayIsNotWritten) {
  for (const double seconds : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    auto pending = decodeRecord<Pending>(PENDING).value();
    pending.lastSeen = Date(seconds);
    EXPECT_FALSE(encodeRecords<Pending>({pending}));
    pending.lastSeen = Date(0);
    pending.firstSeen = Date(seconds);
    EXPECT_FALSE(encodeRecords<Pending>({pending}));
  }
}

}  // namespace
}  // namespace notewick
