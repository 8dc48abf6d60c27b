#include "client/answer_body.h"

#include <gmock/gmock.h>

#include "tests/client/plain_answer.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const AnswerBody NOTHING;
const Participant TOBIAS = {"1", "Tobias", "Hargreave"};
const Participant LENA = {"2", "Lena", "O'Keefe"};

std::optional<std::vector<Participant>> participantsOf(const std::string& array) {
  return readAnswer(R"({"participants":)" + array + "}").participants;
}

TEST(AnswerBody, TakesEveryValueThatIsWanted) {
  const auto body = readAnswer(R"({"error":"E","accessToken":"A","refreshToken":"R",
      "expiresAt":4102444800.5,"user":{"email":"ada@velk.example"},"capturedId":"N",
      "participants":[{"id":"1","first_name":"Tobias","last_name":"Hargreave"}]})");
  EXPECT_EQ(body.error, "E");
  EXPECT_EQ(body.accessToken, "A");
  EXPECT_EQ(body.refreshToken, "R");
  EXPECT_EQ(body.expiresAt, 4102444800.5);
  EXPECT_EQ(body.user, AnswerBody::User{"ada@velk.example"});
  EXPECT_EQ(body.capturedId, "N");
  EXPECT_THAT(body.participants.value(), ElementsAre(TOBIAS));
}

TEST(AnswerBody, WhatIsNoObjectHoldsNothing) {
  for (const std::string text :
       {"", " ", "[]", R"([{"error":"x"}])", "null", "true", "7", R"("error")", "<html></html>",
        R"({"error":)", R"({"error":"x")", R"({"error":"x"} x)", "{'error':'x'}",
        R"({"error":"x",})", R"({"error":"x","a":1e999})", R"({"error":"x","a":[1})"})
    EXPECT_EQ(readAnswer(text), NOTHING) << text;
}

TEST(AnswerBody, BadBytesAnywhereLeaveNothing) {
  EXPECT_EQ(readAnswer("{\"error\":\"\xC3\x28\"}"), NOTHING);
  EXPECT_EQ(readAnswer("{\"error\":\"x\",\"a\":\"\xC3\x28\"}"), NOTHING);
  EXPECT_EQ(readAnswer(R"({"error":"x","a":"\ud800"})"), NOTHING);
  EXPECT_EQ(readAnswer(std::string("{\"error\":\"x\"}\0", 14)), NOTHING);
  EXPECT_EQ(readAnswer(std::string("{\0}\0", 4)), NOTHING);
}

TEST(AnswerBody, NestingBeyond512LevelsLeavesNothing) {
  const auto nested = [](std::size_t levels) {
    return R"({"error":"x","a":)" + std::string(levels, '[') + std::string(levels, ']') + "}";
  };
  EXPECT_EQ(readAnswer(nested(511)).error, "x");
  EXPECT_EQ(readAnswer(nested(512)), NOTHING);
  EXPECT_EQ(readAnswer(std::string(100'000, '{')), NOTHING);
}

TEST(AnswerBody, AByteOrderMarkAndBlanksArePassedOver) {
  EXPECT_EQ(readAnswer("\xEF\xBB\xBF{\"error\":\"x\"}").error, "x");
  EXPECT_EQ(readAnswer(" \r\n\t{ \n\n \"error\" \t\t : \"x\" \n } \n ").error, "x");
  EXPECT_EQ(readAnswer("{\"error\":1  2}"), NOTHING) << "blanks still separate";
}

TEST(AnswerBody, BlanksInsideATextStay) {
  EXPECT_EQ(readAnswer(R"({"error":"a   b"})").error, "a   b");
  EXPECT_EQ(readAnswer(R"({"error":"a\"   b"})").error, "a\"   b");
  EXPECT_EQ(readAnswer(R"({"error":"a\\","capturedId":"   "})").capturedId, "   ");
}

TEST(AnswerBody, AValueOfAnotherTypeIsAbsent) {
  for (const std::string value : {"7", "null", "true", "[]", R"(["x"])", "{}", R"({"error":"x"})"})
    EXPECT_EQ(readAnswer(R"({"error":)" + value + "}"), NOTHING) << value;
  for (const std::string value : {R"("7")", "null", "true", "[7]", R"({"expiresAt":7})"})
    EXPECT_EQ(readAnswer(R"({"expiresAt":)" + value + "}"), NOTHING) << value;
  EXPECT_EQ(readAnswer(R"({"error":""})").error, "");
}

TEST(AnswerBody, AnExpiryIsAnyNumber) {
  EXPECT_EQ(readAnswer(R"({"expiresAt":7})").expiresAt, 7.0);
  EXPECT_EQ(readAnswer(R"({"expiresAt":-7})").expiresAt, -7.0);
  EXPECT_EQ(readAnswer(R"({"expiresAt":7.25e2})").expiresAt, 725.0);
  EXPECT_EQ(readAnswer(R"({"expiresAt":18446744073709551615})").expiresAt, 18446744073709551615.0);
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
  EXPECT_EQ(readAnswer(R"({"user":{"email":"a"},"user":{}})").user, AnswerBody::User{});
  EXPECT_EQ(readAnswer(R"({"user":{"email":"a"},"user":[]})").user, std::nullopt);
  EXPECT_EQ(readAnswer(R"({"user":{"email":"a","email":7}})").user, AnswerBody::User{});
  EXPECT_EQ(readAnswer(R"({"participants":[{}],"participants":7})").participants, std::nullopt);
  EXPECT_THAT(readAnswer(R"({"participants":[7],"participants":[{"id":"1","id":7},
      {"id":"0","id":"1","first_name":"Tobias","last_name":7,"last_name":"Hargreave"}]})")
                  .participants.value(),
              ElementsAre(TOBIAS));
}

TEST(AnswerBody, AUserIsAnObject) {
  EXPECT_EQ(readAnswer(R"({"user":{}})").user, AnswerBody::User{});
  EXPECT_EQ(readAnswer(R"({"user":{"email":7}})").user, AnswerBody::User{});
  for (const std::string value : {"null", R"("ada")", "[]", R"([{"email":"a"}])", "7"})
    EXPECT_EQ(readAnswer(R"({"user":)" + value + "}").user, std::nullopt) << value;
}

TEST(AnswerBody, ParticipantsKeepTheServicesOrder) {
  EXPECT_THAT(participantsOf(R"([{"id":"2","first_name":"Lena","last_name":"O'Keefe"},
      {"id":"1","first_name":"Tobias","last_name":"Hargreave","age":7}])")
                  .value(),
              ElementsAre(LENA, TOBIAS));
}

TEST(AnswerBody, AnEmptyListOfParticipantsIsAList) {
  EXPECT_THAT(participantsOf("[]").value(), IsEmpty());
}

TEST(AnswerBody, ParticipantsAreAnArrayOfObjects) {
  for (const std::string value :
       {R"("x")", "null", "{}", "7", "[7]", R"(["x"])", "[null]", "[true]", "[[]]", "[{},7]",
        R"({"a":[{"id":"1","first_name":"A","last_name":"B"}]})",
        R"([{"id":"1","first_name":"A","last_name":"B"},[{}],{}])"})
    EXPECT_EQ(participantsOf(value), std::nullopt) << value;
  EXPECT_EQ(readAnswer(R"({"Participants":[]})").participants, std::nullopt);
}

TEST(AnswerBody, AnEntryWithoutItsThreeTextsIsSkipped) {
  EXPECT_THAT(participantsOf(R"([
      {"id":7,"first_name":"A","last_name":"B"},
      {"id":"1","first_name":"Tobias","last_name":"Hargreave"},
      {"first_name":"A","last_name":"B"},
      {"id":"x","last_name":"B"},
      {"id":"x","first_name":"A"},
      {"id":"x","first_name":null,"last_name":"B"},
      {"id":"x","first_name":"A","last_name":["B"]},
      {"id":"x","first_name":"A","more":{"last_name":"B"}},
      {},
      {"id":"2","first_name":"Lena","last_name":"O'Keefe"}])")
                  .value(),
              ElementsAre(TOBIAS, LENA));
  EXPECT_THAT(participantsOf("[{},{}]").value(), IsEmpty());
}

// --- Eight megabytes -----------------------------------------------------------------------------

constexpr std::size_t LARGEST_BODY = 8 * 1024 * 1024;

/// `part` over and over between `head` and `tail`.
std::string filled(const std::string& head, const std::string& part, const std::string& tail) {
  std::string text = head;
  while (text.size() + part.size() + tail.size() <= LARGEST_BODY) text += part;
  return text + tail;
}

TEST(AnswerBodySize, MegabytesThatNobodyWantsArePassedOver) {
  const std::string tail = R"(null],"error":"x"})";
  for (const std::string part : {"[],", "{},", R"({"a":1},)", R"("text",)", "1.5,", "\n"})
    EXPECT_EQ(readAnswer(filled(R"({"a":[)", part, tail)).error, "x") << part;
}

TEST(AnswerBodySize, MegabytesThatEndWronglyHoldNothing) {
  for (const std::string part : {"[", "{\"a\":", "\n", "[],", "x"})
    EXPECT_EQ(readAnswer(filled(R"({"error":"x","a":)", part, "x")), NOTHING) << part;
}

TEST(AnswerBodySize, ALongTextIsReadWhole) {
  const std::string text = filled("", "\u0301", "");
  EXPECT_TRUE(readAnswer(R"({"error":")" + text + R"("})").error == text);
}

TEST(AnswerBodySize, ManyParticipantsAreAllRead) {
  const std::string entry = R"({"id":"1","first_name":"Tobias","last_name":"Hargreave"},)";
  const auto list = readAnswer(filled(R"({"participants":[)", entry, "{}]}")).participants.value();
  EXPECT_EQ(list.size(), (LARGEST_BODY - 21) / entry.size());
  EXPECT_EQ(list.back(), TOBIAS);
}

}  // namespace
}  // namespace notewick
