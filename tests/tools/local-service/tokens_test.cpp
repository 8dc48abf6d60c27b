#include "tools/local-service/tokens.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using namespace std::chrono_literals;

class TokensTest : public testing::Test {
 protected:
  std::int64_t stored() {
    Transaction transaction(database);
    auto rows = transaction.query("SELECT count(*) FROM tokens");
    return rows.next() ? rows.integer(0) : -1;
  }

  LogicalClock clock;
  Database database{":memory:"};
  Accounts accounts{database};
  AccountId dana = accounts.save("dana@example.org", "x");
  Tokens tokens{database, clock.clock(), 3600s};
};

TEST_F(TokensTest, AnAccessTokenIsGoodUntilItExpires) {
  const auto session = tokens.open(dana);
  EXPECT_EQ(session.expiresAt, clock.now() + 3600s);
  clock.advance(3600s - 1ms);
  EXPECT_EQ(tokens.accessAccount(session.accessToken), dana);
  clock.advance(1ms);
  EXPECT_EQ(tokens.accessAccount(session.accessToken), std::nullopt);
}

TEST_F(TokensTest, ARefreshTokenStaysGoodForSixtySecondsAfterItsFirstUse) {
  const auto session = tokens.open(dana);
  ASSERT_TRUE(tokens.refresh(session.refreshToken));
  clock.advance(60s);
  EXPECT_TRUE(tokens.refresh(session.refreshToken));
  clock.advance(1ms);
  EXPECT_FALSE(tokens.refresh(session.refreshToken));
}

TEST_F(TokensTest, ASecondUseDoesNotProlongTheSixtySeconds) {
  const auto session = tokens.open(dana);
  ASSERT_TRUE(tokens.refresh(session.refreshToken));
  clock.advance(40s);
  ASSERT_TRUE(tokens.refresh(session.refreshToken));
  clock.advance(40s);
  EXPECT_FALSE(tokens.refresh(session.refreshToken));
}

TEST_F(TokensTest, ARefreshTokenIsRetiredByNothingButItsOwnUse) {
  const auto first = tokens.open(dana);
  const auto second = tokens.refresh(first.refreshToken);
  const auto third = tokens.refresh(first.refreshToken);
  ASSERT_TRUE(second && third);
  ASSERT_TRUE(tokens.refresh(third->refreshToken));
  static_cast<void>(tokens.open(dana));
  clock.advance(24h * 365);
  EXPECT_TRUE(tokens.refresh(second->refreshToken));
}

TEST_F(TokensTest, EveryTokenOfManyRefreshesWithOneTokenIsGood) {
  const auto first = tokens.open(dana);
  std::vector<Session> sessions;
  for (int at = 0; at < 50; ++at) sessions.push_back(tokens.refresh(first.refreshToken).value());
  clock.advance(10min);
  for (const auto& session : sessions) {
    EXPECT_EQ(tokens.accessAccount(session.accessToken), dana);
    EXPECT_TRUE(tokens.refresh(session.refreshToken));
  }
}

TEST_F(TokensTest, AnEarlierAccessTokenOutlivesARefresh) {
  const auto first = tokens.open(dana);
  ASSERT_TRUE(tokens.refresh(first.refreshToken));
  EXPECT_EQ(tokens.accessAccount(first.accessToken), dana);
}

TEST_F(TokensTest, NoKindStandsInForAnother) {
  const auto session = tokens.open(dana);
  const auto page = tokens.openPage(dana);
  EXPECT_FALSE(tokens.accessAccount(session.refreshToken));
  EXPECT_FALSE(tokens.accessAccount(page));
  EXPECT_FALSE(tokens.refresh(session.accessToken));
  EXPECT_FALSE(tokens.refresh(page));
  EXPECT_FALSE(tokens.pageAccount(session.accessToken));
  EXPECT_FALSE(tokens.pageAccount(""));
}

TEST_F(TokensTest, APageTokenIsGoodUntilItsEndOrItsClosing) {
  const auto one = tokens.openPage(dana), other = tokens.openPage(dana);
  EXPECT_EQ(tokens.pageAccount(one), dana);
  tokens.closePage(one);
  EXPECT_EQ(tokens.pageAccount(one), std::nullopt);
  clock.advance(Tokens::PAGE_LIFETIME - 1ms);
  EXPECT_EQ(tokens.pageAccount(other), dana);
  clock.advance(1ms);
  EXPECT_EQ(tokens.pageAccount(other), std::nullopt);
}

TEST_F(TokensTest, OnlyFingerprintsAreStored) {
  const auto session = tokens.open(dana);
  Transaction transaction(database);
  auto rows = transaction.query("SELECT fingerprint FROM tokens");
  while (rows.next()) {
    EXPECT_NE(rows.text(0), session.accessToken);
    EXPECT_NE(rows.text(0), session.refreshToken);
    EXPECT_EQ(rows.text(0).size(), 64U);
  }
}

TEST_F(TokensTest, StaleTokensAreForgotten) {
  auto session = tokens.open(dana);
  for (int at = 0; at < 20; ++at) {
    clock.advance(2h);
    session = tokens.refresh(session.refreshToken).value();
  }
  EXPECT_LE(stored(), 4);
}

}  // namespace
}  // namespace notewick::service
