#include "tools/local-service/http.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace notewick::service {
namespace {

TEST(HttpTest, HeaderNamesKnowNoCase) {
  const Request request{.headers = {{"Content-TYPE", "a"}}};
  EXPECT_EQ(request.header("content-type"), "a");
  EXPECT_EQ(request.header("Content-Typ"), "");
}

TEST(HttpTest, FindsACookieAmongOthers) {
  const Request request{.headers = {{"Cookie", "a=1; session=x=y; session=2; empty="}}};
  EXPECT_EQ(request.cookie("session"), "x=y");
  EXPECT_EQ(request.cookie("a"), "1");
  EXPECT_EQ(request.cookie("empty"), "");
  EXPECT_EQ(request.cookie("sess"), std::nullopt);
  EXPECT_EQ(Request{}.cookie("a"), std::nullopt);
}

TEST(HttpTest, DecodesFormFields) {
  const Request request{.body = "a=1+2%2B3&e%20f=%C3%A9%00&broken=%4&worse=%zz%&&=&last"};
  EXPECT_EQ(request.formField("a"), "1 2+3");
  EXPECT_EQ(request.formField("e f"), std::string("é\0", 3));
  EXPECT_EQ(request.formField("broken"), "%4");
  EXPECT_EQ(request.formField("worse"), "%zz%");
  EXPECT_EQ(request.formField("last"), "");
  EXPECT_EQ(request.formField("none"), std::nullopt);
}

TEST(HttpTest, JsonAnswersSurviveBytesThatAreNoText) {
  const auto answer = jsonAnswer(200, {{"a", "\xff"}});
  EXPECT_EQ(answer.contentType, "application/json");
  EXPECT_EQ(answer.body, "{\"a\":\"\uFFFD\"}");
}

TEST(HttpTest, AnErrorIsAnObjectWithItsText) {
  const auto answer = errorAnswer(418, "No \"tea\"");
  EXPECT_EQ(answer.status, 418);
  EXPECT_EQ(answer.body, R"({"error":"No \"tea\""})");
}

TEST(HttpTest, SeeOtherNamesThePlace) {
  const auto answer = seeOther("/login");
  EXPECT_EQ(answer.status, 303);
  EXPECT_EQ(answer.headers.at(0), std::pair(std::string("Location"), std::string("/login")));
}

}  // namespace
}  // namespace notewick::service
