#include "tools/local-service/accounts.h"

#include <gtest/gtest.h>

namespace notewick::service {
namespace {

class AccountsTest : public testing::Test {
 protected:
  Database database{":memory:"};
  Accounts accounts{database};
};

TEST_F(AccountsTest, SignsInWithTheRightPasswordOnly) {
  const auto dana = accounts.save("dana@example.org", "right");
  EXPECT_EQ(accounts.signIn("dana@example.org", "right"), dana);
  EXPECT_EQ(accounts.signIn("dana@example.org", "wrong"), std::nullopt);
  EXPECT_EQ(accounts.signIn("dana@example.org", ""), std::nullopt);
  EXPECT_EQ(accounts.signIn("nobody@example.org", "right"), std::nullopt);
}

TEST_F(AccountsTest, TellsEmailsApartWithoutRegardToCaseAndKeepsTheFirstSpelling) {
  const auto dana = accounts.save("Dana@Example.org", "one");
  EXPECT_EQ(accounts.save("dana@example.ORG", "two"), dana);
  EXPECT_EQ(accounts.email(dana), "Dana@Example.org");
  EXPECT_EQ(accounts.find("DANA@EXAMPLE.ORG"), dana);
}

TEST_F(AccountsTest, SavingAgainReplacesThePasswordAndKeepsTheParticipants) {
  const auto dana = accounts.save("dana@example.org", "one");
  accounts.saveParticipants(dana, {{"p-1", "Ann", "Lee"}});
  accounts.save("dana@example.org", "two");
  EXPECT_EQ(accounts.signIn("dana@example.org", "one"), std::nullopt);
  EXPECT_EQ(accounts.signIn("dana@example.org", "two"), dana);
  EXPECT_EQ(accounts.participants(dana), (Participants{{"p-1", "Ann", "Lee"}}));
}

TEST_F(AccountsTest, GivesEachAccountItsOwnParticipants) {
  const auto dana = accounts.save("dana@example.org", "x");
  const auto eli = accounts.save("eli@example.org", "x");
  accounts.saveParticipants(dana, {{"p-1", "Ann", "Lee"}});
  EXPECT_EQ(accounts.participants(dana).size(), 1U);
  EXPECT_TRUE(accounts.participants(eli).empty());
}

TEST_F(AccountsTest, StoresNoPasswordInTheClear) {
  accounts.save("dana@example.org", "right horse");
  Transaction transaction(database);
  auto rows = transaction.query("SELECT password_hash FROM accounts");
  ASSERT_TRUE(rows.next());
  EXPECT_TRUE(rows.text(0).starts_with("$argon2id$"));
  EXPECT_EQ(rows.text(0).find("right horse"), std::string::npos);
}

}  // namespace
}  // namespace notewick::service
