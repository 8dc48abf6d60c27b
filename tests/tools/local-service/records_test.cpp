#include "tools/local-service/records.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

const json PEOPLE = {{{"id", "p-1"}, {"first_name", "Zoë"}, {"last_name", "Lindqvist"}}};

class RecordsTest : public testing::Test {
 protected:
  static std::string refreshToken(const json& session) { return session.at("refreshToken"); }
  static std::string accessToken(const json& session) { return session.at("accessToken"); }
  bool refreshes(const std::string& token) { return records.refreshSession(token).has_value(); }

  /// Every text of one column, as another program sees it.
  std::set<json> stored(const std::string& column, const std::string& table) {
    std::set<json> values;
    Database other(file, "");
    for (const auto& row : other.run("SELECT " + column + " FROM " + table)) {
      values.insert(row.at(column));
    }
    return values;
  }

  TemporaryFolder folder;
  std::string file = folder.file("notes.db");
  LogicalClock clock;
  Records records{file, clock.clock()};
  AccountId dana = records.saveAccount("Dana@example.org", "right");
};

TEST_F(RecordsTest, SignsInWithTheRightPasswordOnly) {
  EXPECT_EQ(records.signIn("Dana@example.org", "right"), dana);
  EXPECT_EQ(records.signIn("Dana@example.org", "wrong"), std::nullopt);
  EXPECT_EQ(records.signIn("Dana@example.org", ""), std::nullopt);
  EXPECT_EQ(records.signIn("nobody@example.org", "right"), std::nullopt);
}

TEST_F(RecordsTest, SavingAgainReplacesThePasswordAndNothingElseOfThisAccount) {
  records.saveParticipants(dana, PEOPLE);
  EXPECT_EQ(records.saveAccount("dana@EXAMPLE.org", "two"), dana);
  EXPECT_EQ(records.signIn("dana@example.org", "right"), std::nullopt);
  EXPECT_EQ(records.signIn("dana@example.org", "two"), dana);
  EXPECT_EQ(records.email(dana), "Dana@example.org");
  EXPECT_EQ(records.participants(dana), PEOPLE);
  EXPECT_EQ(records.participants(records.saveAccount("eli@example.org", "x")), json::array());
}

TEST_F(RecordsTest, StoresNoPasswordAndNoTokenInTheClear) {
  const auto session = records.openSession(dana);
  EXPECT_TRUE(
      stored("password_hash", "accounts").begin()->get<std::string>().starts_with("$argon2id$"));
  const auto prints = stored("fingerprint", "tokens");
  EXPECT_EQ(prints.size(), 2U);
  EXPECT_FALSE(prints.contains(accessToken(session)));
  EXPECT_FALSE(prints.contains(refreshToken(session)));
}

TEST_F(RecordsTest, ASessionHasTwoDifferentTokensAndIsGoodUntilItExpires) {
  clock.advance(999ms);
  const auto session = records.openSession(dana);
  EXPECT_EQ(accessToken(session).size(), 64U);
  EXPECT_NE(accessToken(session), refreshToken(session));
  EXPECT_NE(accessToken(session), accessToken(records.openSession(dana)));
  EXPECT_EQ(session.at("expiresAt"), 1'770'003'600) << "in seconds";
  clock.advance(3600s - 1ms);
  EXPECT_EQ(records.accountOf(accessToken(session)), dana);
  clock.advance(1ms);
  EXPECT_EQ(records.accountOf(accessToken(session)), std::nullopt);
}

TEST_F(RecordsTest, ARefreshTokenStaysGoodForSixtySecondsAfterItsFirstUse) {
  const auto token = refreshToken(records.openSession(dana));
  ASSERT_TRUE(refreshes(token));
  clock.advance(60s);
  EXPECT_TRUE(refreshes(token)) << "and this use does not prolong them";
  clock.advance(1ms);
  EXPECT_FALSE(refreshes(token));
}

TEST_F(RecordsTest, ARefreshTokenIsRetiredByNothingButItsOwnUse) {
  const auto first = records.openSession(dana);
  const auto second = records.refreshSession(refreshToken(first)).value();
  const auto third = records.refreshSession(refreshToken(first)).value();
  ASSERT_TRUE(refreshes(refreshToken(third)));
  EXPECT_EQ(records.accountOf(accessToken(first)), dana);
  clock.advance(24h * 365);
  EXPECT_TRUE(refreshes(refreshToken(second)));
}

TEST_F(RecordsTest, NoTokenStandsInForAnother) {
  const auto session = records.openSession(dana);
  EXPECT_EQ(records.accountOf(refreshToken(session)), std::nullopt);
  EXPECT_EQ(records.accountOf(""), std::nullopt);
  EXPECT_FALSE(refreshes(accessToken(session)));
  EXPECT_FALSE(refreshes("made up"));
}

TEST_F(RecordsTest, NotesBelongToTheirAccountAndTheSameTwiceIsTwo) {
  const auto eli = records.saveAccount("eli@example.org", "x");
  const Note note{.participant = PEOPLE[0], .input = "", .minutes = 1, .sessionDate = ""};
  const auto first = records.addNote(dana, note), second = records.addNote(dana, note);
  const auto third = records.addNote(eli, note);
  const auto all = records.notes(), newest = records.newestNotes(dana);
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[0].at("id"), first);
  EXPECT_EQ(all[2].at("id"), third);
  ASSERT_EQ(newest.size(), 2U);
  EXPECT_EQ(newest[0].at("id"), second);
}

}  // namespace
}  // namespace notewick::service
