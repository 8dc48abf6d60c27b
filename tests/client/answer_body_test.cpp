#include "client/answer_body.h"

#include <gmock/gmock.h>

namespace notewick {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const AnswerBody NOTHING;
const Participant TOBIAS = {"1", "Tobias", "Hargreave"};
const Participant LENA = {"2", "Lena", "O'Keefe"};

/// The answer `{"<key>":<value>}`.
AnswerBody answerWith(const std::string& key, const std::string& value) {
  return readAnswer("{\"" + key + "\":" + value + "}");
}

std::optional<std::vector<Participant>> participantsIn(const std::string& value) {
  return answerWith("participants", value).participants;
}

TEST(AnswerBody, TakesEveryValueThatIsWantedAndPassesOverTheOthers) {
  const auto body = readAnswer(R"({"error":"E","note":"x","accessToken":"A","refreshToken":"R",
      "expiresAt":4102444800.5,"issuedAt":7,"user":{"email":"ada@velk.example","name":"x"},
      "admin":{"email":"x"},"capturedId":"N",
      "participants":[{"id":"1","first_name":"Tobias","last_name":"Hargreave","note":"x"}],
      "list":[{"id":"2","first_name":"Lena","last_name":"O'Keefe"}]})");
  EXPECT_EQ(body.error, "E");
  EXPECT_EQ(body.accessToken, "A");
  EXPECT_EQ(body.refreshToken, "R");
  EXPECT_EQ(body.expiresAt, 4102444800.5);
  EXPECT_EQ(body.user, AnswerBody::User{"ada@velk.example"});
  EXPECT_EQ(body.capturedId, "N");
  EXPECT_THAT(body.participants.value(), ElementsAre(TOBIAS));
}

TEST(AnswerBody, WhatIsNoJsonObjectHoldsNothing) {
  for (const std::string& text :
       {""s, "[]"s, R"([{"error":"x"}])"s, "null"s, R"("error")"s, "<html></html>"s,
        R"({"error":"x")"s, R"({"error":"x"} x)"s, R"({"error":"x","a":1e999})"s,
        R"({"error":"x","a":[1})"s, "{\"error\":\"x\",\"a\":\"\xC3\x28\"}"s,
        R"({"error":"x","a":"\ud800"})"s, "{\"error\":\"x\"}\0"s})
    EXPECT_EQ(readAnswer(text), NOTHING) << testing::PrintToString(text);
}

TEST(AnswerBody, NestingBeyond512LevelsLeavesNothing) {
  const auto nested = [](std::size_t levels) {
    return R"({"error":"x","a":)" + std::string(levels, '[') + std::string(levels, ']') + "}";
  };
  EXPECT_EQ(readAnswer(nested(511)).error, "x");
  EXPECT_EQ(readAnswer(nested(512)), NOTHING);
  EXPECT_EQ(readAnswer(std::string(100'000, '{')), NOTHING);
}

TEST(AnswerBody, AByteOrderMarkAndRunsOfBlanksArePassedOver) {
  EXPECT_EQ(readAnswer("\xEF\xBB\xBF{\"error\":\"x\"}").error, "x");
  EXPECT_EQ(readAnswer(" \r\n\t{ \n\n \"error\" \t\t : \"x\" \n } \n ").error, "x");
  EXPECT_EQ(readAnswer("{\"error\":1  2}"), NOTHING) << "blanks still separate";
}

TEST(AnswerBody, BlanksInsideATextStay) {
  EXPECT_EQ(answerWith("error", R"("a   b")").error, "a   b");
  EXPECT_EQ(answerWith("error", R"("a\"   b")").error, "a\"   b");
  EXPECT_EQ(readAnswer(R"({"error":"a\\","capturedId":"   "})").capturedId, "   ");
}

TEST(AnswerBody, AValueOfAnotherTypeIsAbsent) {
  for (const std::string value : {"7", "null", "true", "[]", R"(["x"])", "{}", R"({"error":"x"})"})
    EXPECT_EQ(answerWith("error", value), NOTHING) << value;
  for (const std::string value : {R"("7")", "null", "true", "[7]", R"({"expiresAt":7})"})
    EXPECT_EQ(answerWith("expiresAt", value), NOTHING) << value;
  for (const std::string value : {"null", R"("ada")", "[]", R"([{"email":"a"}])", "7"})
    EXPECT_EQ(answerWith("user", value), NOTHING) << value;
}

TEST(AnswerBody, AnExpiryIsAnyNumber) {
  EXPECT_EQ(answerWith("expiresAt", "7").expiresAt, 7.0);
  EXPECT_EQ(answerWith("expiresAt", "-7").expiresAt, -7.0);
  EXPECT_EQ(answerWith("expiresAt", "7.25e2").expiresAt, 725.0);
}

TEST(AnswerBody, AUserMayHaveNoEmail) {
  EXPECT_EQ(answerWith("user", "{}").user, AnswerBody::User{});
  EXPECT_EQ(answerWith("user", R"({"email":7})").user, AnswerBody::User{});
}

TEST(AnswerBody, KeysCountToTheLetterAndInTheirPlaceOnly) {
  EXPECT_EQ(readAnswer(R"({"Error":"x","error ":"x","data":{"error":"x","user":{}},
      "list":[{"error":"x","participants":[]}],"email":"x","id":"1"})"),
            NOTHING);
  EXPECT_EQ(readAnswer(R"({"user":{"a":{"email":"x"},"error":"x","participants":[{}]}})").user,
            AnswerBody::User{});
}

TEST(AnswerBody, OfADoubledKeyTheLastCounts) {
  EXPECT_EQ(readAnswer(R"({"error":"first","error":"last"})").error, "last");
  EXPECT_EQ(readAnswer(R"({"error":"first","error":7})"), NOTHING);
  EXPECT_EQ(readAnswer(R"({"expiresAt":1,"expiresAt":"2"})"), NOTHING);
  EXPECT_EQ(readAnswer(R"({"user":{"email":"a"},"user":[]})"), NOTHING);
  EXPECT_EQ(readAnswer(R"({"user":{"email":"a","email":7}})").user, AnswerBody::User{});
  EXPECT_EQ(readAnswer(R"({"participants":[{}],"participants":7})"), NOTHING);
}

TEST(AnswerBody, ParticipantsKeepTheServicesOrder) {
  EXPECT_THAT(participantsIn(R"([{"id":"2","first_name":"Lena","last_name":"O'Keefe"},
      {"id":"1","first_name":"Tobias","last_name":"Hargreave","age":7}])")
                  .value(),
              ElementsAre(LENA, TOBIAS));
  EXPECT_THAT(participantsIn("[]").value(), IsEmpty());
}

TEST(AnswerBody, ParticipantsAreAnArrayOfObjects) {
  for (const std::string value :
       {R"("x")", "null", "{}", "7", "[7]", R"(["x"])", "[null]", "[true]", "[[]]", "[{},7]",
        R"({"a":[{"id":"1","first_name":"A","last_name":"B"}]})",
        R"([{"id":"1","first_name":"A","last_name":"B"},[{}],{}])"})
    EXPECT_EQ(participantsIn(value), std::nullopt) << value;
}

TEST(AnswerBody, AnEntryWithoutItsThreeTextsIsSkipped) {
  EXPECT_THAT(participantsIn(R"([
      {"id":7,"first_name":"A","last_name":"B"},
      {"id":"1","first_name":"Tobias","last_name":"Hargreave"},
      {"first_name":"A","last_name":"B"},
      {"id":"x","last_name":"B"},
      {"id":"x","first_name":"A"},
      {"id":"x","first_name":"A","last_name":["B"]},
      {"id":"x","first_name":"A","more":{"last_name":"B"}},
      {},
      {"id":"2","first_name":"Lena","last_name":"O'Keefe"}])")
                  .value(),
              ElementsAre(TOBIAS, LENA));
}

}  // namespace
}  // namespace notewick
