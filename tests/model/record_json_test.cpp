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
using testing::FieldsAre;

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

template <class Record>
bool decodes(const json& value) {
  return decodeRecord<Record>(value).has_value();
}

/// Each kind of record by a whole one.
struct Kind {
  json whole;
  bool (*decodes)(const json&);
};
const Kind KINDS[] = {{PARTICIPANT, decodes<Participant>},
                      {PENDING, decodes<Pending>},
                      {OUTBOX_ITEM, decodes<OutboxItem>}};

json with(json record, const std::string& key, json value) {
  record[key] = std::move(value);
  return record;
}

json without(json record, const std::string& key) {
  record.erase(key);
  return record;
}

std::string listOf(const json& record) {
  return json::array({record}).dump();
}

/// The text of a list of this record, with a number written so.
std::string withNumber(const json& record, const std::string& key, const std::string& number) {
  auto text = listOf(with(record, key, "here"));
  const std::string place = "\"here\"";
  return text.replace(text.find(place), place.size(), number);
}

template <class Record>
std::optional<std::string> encoded(const Record& record) {
  return encodeRecords<Record>({record});
}

/// The record that comes back from a file.
template <class Record>
Record throughAFile(const Record& record) {
  return decodeRecords<Record>(encoded(record).value()).value().front();
}

/// Reads a whole record and has it written with these keys in this order.
template <class Record>
void expectWritten(const json& whole, const std::vector<std::string>& keys) {
  const auto list =
      nlohmann::ordered_json::parse(encoded(decodeRecord<Record>(whole).value()).value());
  std::vector<std::string> written;
  for (const auto& [key, value] : list.at(0).items()) written.push_back(key);
  EXPECT_EQ(written, keys);
  EXPECT_EQ(json(list.at(0)), whole);
}

std::uint64_t bitsOf(double number) {
  return std::bit_cast<std::uint64_t>(number);
}

// --- Reading -------------------------------------------------------------------------------------

TEST(RecordJson, ReadsEveryField) {
  EXPECT_EQ(decodeRecord<Participant>(PARTICIPANT), (Participant{"1", "Lena", "O'Keefe"}));
  EXPECT_THAT(decodeRecord<Pending>(PENDING).value(),
              FieldsAre("A", "Lena O'Keefe", "2024-05-02", Date(736333200.25), Date(736333260), 12,
                        ElementsAre("Inbox", "Plan.docx")));
  EXPECT_THAT(
      decodeRecord<OutboxItem>(OUTBOX_ITEM).value(),
      FieldsAre("B", "1", "Lena O'Keefe", "Phoned", 30, "2024-05-02", 2, "Server busy (503)"));
}

TEST(RecordJson, RequiresEveryKeyToTheLetterButLastErrorWhichMayBeNull) {
  for (const auto& [whole, decodesRecord] : KINDS) {
    for (const auto& [key, value] : whole.items()) {
      if (key == "lastError") continue;
      auto otherCase = key;
      otherCase.front() = static_cast<char>(std::toupper(key.front()));
      EXPECT_FALSE(decodesRecord(without(whole, key))) << key;
      EXPECT_FALSE(decodesRecord(with(without(whole, key), otherCase, value))) << key;
    }
    EXPECT_TRUE(decodesRecord(with(whole, "colour", json::array({7})))) << "a key nobody knows";
  }
  for (const json& item :
       {without(OUTBOX_ITEM, "lastError"), with(OUTBOX_ITEM, "lastError", nullptr)})
    EXPECT_EQ(decodeRecord<OutboxItem>(item).value().lastError, std::nullopt) << item;
}

TEST(RecordJson, RefusesAValueOfAnotherType) {
  for (const auto& [whole, decodesRecord] : KINDS) {
    for (const auto& [key, right] : whole.items()) {
      for (const json& wrong : {json(nullptr), json(true), json(1), json("text"), json::array({1}),
                                json::array({"a", nullptr}), json::object()}) {
        const bool sameType = right.is_number() == wrong.is_number() &&
                              right.is_string() == wrong.is_string() &&
                              (right.is_number() || right.is_string());
        if (sameType || (key == "lastError" && wrong.is_null())) continue;
        EXPECT_FALSE(decodesRecord(with(whole, key, wrong))) << key << " = " << wrong;
      }
    }
  }
}

TEST(RecordJson, IntegersAreIntegralNumbersOf64Bits) {
  const auto minutes = [](const std::string& number) -> std::optional<std::int64_t> {
    const auto list = decodeRecords<OutboxItem>(withNumber(OUTBOX_ITEM, "minutes", number));
    return list ? std::optional(list->front().minutes) : std::nullopt;
  };
  EXPECT_EQ(minutes("12.0"), 12);
  EXPECT_EQ(minutes("-0.0"), 0);
  EXPECT_EQ(minutes("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(minutes("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const auto* const number :
       {"9223372036854775808", "18446744073709551615", "1e300", "12.5", "1e-400", "-1e-400"})
    EXPECT_EQ(minutes(number), std::nullopt) << number;
}

TEST(RecordJson, DatesAreAnyFiniteNumberToTheLastBit) {
  for (const std::string text :
       {"0", "-0.0", "-1", "736333200.1", "9007199254740993", "9007199254740993.0",
        "18446744073709551615", "5e-324", "1e-400", "1.7976931348623157e308"}) {
    const auto list = decodeRecords<Pending>(withNumber(PENDING, "firstSeen", text));
    ASSERT_TRUE(list) << text;
    EXPECT_EQ(bitsOf(list->front().firstSeen.count()), bitsOf(std::strtod(text.c_str(), nullptr)))
        << text;
  }
}

TEST(RecordJson, AListIsAnArrayOfGoodRecordsInItsOrder) {
  const std::vector<Participant> list = {{"2", "B", "B"}, {"1", "A", "A"}, {"2", "B", "B"}};
  EXPECT_EQ(decodeRecords<Participant>(encodeRecords(list).value()), list);
  EXPECT_EQ(decodeRecords<Participant>("[]"), std::vector<Participant>());
  for (const json& bad :
       {json::object(), PARTICIPANT, json(nullptr), json::array({PARTICIPANT, nullptr}),
        json::array({without(PARTICIPANT, "id"), PARTICIPANT})})
    EXPECT_EQ(decodeRecords<Participant>(bad.dump()), std::nullopt) << bad;
}

TEST(RecordJson, AListCutAnywhereDoesNotDecodeButMayEndInBlanks) {
  const auto whole = listOf(OUTBOX_ITEM);
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(decodeRecords<OutboxItem>(whole.substr(0, length))) << length;
  EXPECT_TRUE(decodeRecords<OutboxItem>(whole + "   "));
}

// --- Writing -------------------------------------------------------------------------------------

TEST(RecordJson, WritesEveryFieldInItsOrderAndLastErrorOnlyWhenThereIsOne) {
  expectWritten<Participant>(PARTICIPANT, {"id", "first_name", "last_name"});
  expectWritten<Pending>(PENDING, {"id", "participant", "day", "firstSeen", "lastSeen",
                                   "observedMinutes", "evidence"});
  expectWritten<OutboxItem>(OUTBOX_ITEM, {"id", "participantId", "participantName", "input",
                                          "minutes", "sessionDate", "attempts", "lastError"});
  expectWritten<OutboxItem>(
      without(OUTBOX_ITEM, "lastError"),
      {"id", "participantId", "participantName", "input", "minutes", "sessionDate", "attempts"});
}

TEST(RecordJson, DatesAndIntegersComeBackToTheLastBit) {
  auto pending = decodeRecord<Pending>(PENDING).value();
  for (const double seconds : {-0.0, 736333200.1, 0.1 + 0.2, 1e-300, 1.7976931348623157e308}) {
    pending.firstSeen = Date(seconds);
    EXPECT_EQ(bitsOf(throughAFile(pending).firstSeen.count()), bitsOf(seconds)) << seconds;
  }
  pending.observedMinutes = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(throughAFile(pending).observedMinutes, pending.observedMinutes);
}

TEST(RecordJson, ListsAreIndented) {
  EXPECT_EQ(encoded(Participant{"1", "Lena", "O'Keefe"}),
            "[\n  {\n    \"id\": \"1\",\n    \"first_name\": \"Lena\",\n"
            "    \"last_name\": \"O'Keefe\"\n  }\n]");
}

TEST(RecordJson, ReplacesInvalidUtf8WhenWriting) {
  EXPECT_EQ(throughAFile(Participant{"1", "Le\xFFna", "O'Keefe"}).firstName, "Le\uFFFDna");
}

TEST(RecordJson, ADateThatJsonCannotSayIsNotWritten) {
  for (const double seconds : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    auto pending = decodeRecord<Pending>(PENDING).value();
    pending.firstSeen = Date(seconds);
    EXPECT_EQ(encoded(pending), std::nullopt);
  }
}

}  // namespace
}  // namespace notewick
