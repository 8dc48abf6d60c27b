#include "client/json_map.h"

#include <gmock/gmock.h>

#include "tests/support/received.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

const VELKError MALFORMED = VELKError::api("Malformed participants response");

Result<std::vector<Participant>> participantsOf(const char* text) {
  return participantsIn(json::parse(text));
}

TEST(JsonMap, TakesAnObject) {
  EXPECT_EQ(parseMap(R"({"a": {"b": [1]}})"), json({{"a", {{"b", {1}}}}}));
}

TEST(JsonMap, WhatIsNoObjectIsAnEmptyMap) {
  for (const auto* const text : {"", " ", "[]", R"([{"a":1}])", "null", "true", "7", R"("text")",
                                 "<html></html>", R"({"a":)", R"({"a":1)", R"({"a":1} x)",
                                 "{'a':1}", R"({"a":1,})", "\xff\xfe{\0}\0", R"({"a":1e999})"})
    EXPECT_EQ(parseMap(text), json::object()) << text;
}

TEST(JsonMap, AMapOfBadBytesIsEmpty) {
  EXPECT_EQ(parseMap("{\"error\":\"\xC3\x28\"}"), json::object());
  EXPECT_EQ(parseMap(std::string(100'000, '{')), json::object());
}

TEST(JsonMap, AByteOrderMarkIsPassedOver) {
  EXPECT_EQ(parseMap("\xEF\xBB\xBF{\"a\":1}"), json({{"a", 1}}));
}

TEST(JsonMap, OfADoubledKeyTheLastCounts) {
  EXPECT_EQ(textAt(parseMap(R"({"error":"first","error":"last"})"), "error"), "last");
}

TEST(JsonMap, OnlyATextIsAText) {
  const auto map = parseMap(
      R"({"text":"x","empty":"","number":1,"null":null,"true":true,"array":["x"],"map":{"a":"x"}})");
  EXPECT_EQ(textAt(map, "text"), "x");
  EXPECT_EQ(textAt(map, "empty"), "");
  for (const auto* const key : {"number", "null", "true", "array", "map", "missing", "TEXT"})
    EXPECT_EQ(textAt(map, key), std::nullopt) << key;
}

TEST(JsonMap, ParticipantsKeepTheServicesOrder) {
  EXPECT_THAT(
      participantsOf(R"({"participants":[
                  {"id":"9","first_name":"Lena","last_name":"O'Keefe"},
                  {"id":"1","first_name":"Tobias","last_name":"Hargreave","age":7}]})")
          .value(),
      ElementsAre(Participant{"9", "Lena", "O'Keefe"}, Participant{"1", "Tobias", "Hargreave"}));
}

TEST(JsonMap, AnEmptyListOfParticipantsIsAList) {
  EXPECT_THAT(participantsOf(R"({"participants":[]})").value(), IsEmpty());
}

TEST(JsonMap, WithoutAnArrayOfObjectsTheAnswerIsMalformed) {
  for (const auto* const text :
       {"{}", R"({"participants":"x"})", R"({"participants":null})", R"({"participants":{}})",
        R"({"participants":7})", R"({"participants":[7]})", R"({"participants":["x"]})",
        R"({"participants":[null]})", R"({"participants":[[]]})", R"({"Participants":[]})",
        R"({"participants":[{"id":"1","first_name":"A","last_name":"B"},7]})"})
    EXPECT_EQ(errorOf(participantsOf(text)), MALFORMED) << text;
}

TEST(JsonMap, AnEntryWithoutItsThreeTextsIsSkipped) {
  const auto list = participantsOf(R"({"participants":[
      {"id":7,"first_name":"A","last_name":"B"},
      {"id":"1","first_name":"Tobias","last_name":"Hargreave"},
      {"first_name":"A","last_name":"B"},
      {"id":"x","last_name":"B"},
      {"id":"x","first_name":"A"},
      {"id":"x","first_name":null,"last_name":"B"},
      {"id":"x","first_name":"A","last_name":["B"]},
      {},
      {"id":"2","first_name":"Lena","last_name":"O'Keefe"}]})");
  EXPECT_THAT(list.value(), ElementsAre(Participant{"1", "Tobias", "Hargreave"},
                                        Participant{"2", "Lena", "O'Keefe"}));
}

TEST(JsonMap, AListOfSkippedEntriesIsEmpty) {
  EXPECT_THAT(participantsOf(R"({"participants":[{},{}]})").value(), IsEmpty());
}

}  // namespace
}  // namespace notewick
