#include "tools/local-service/database.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

class DatabaseTest : public testing::Test {
 protected:
  DatabaseTest() {
    Transaction transaction(database);
    transaction.execute("CREATE TABLE things (text TEXT, number INTEGER)");
    transaction.commit();
  }

  std::int64_t count() {
    Transaction transaction(database);
    auto rows = transaction.query("SELECT count(*) FROM things");
    return rows.next() ? rows.integer(0) : -1;
  }

  Database database{":memory:"};
};

TEST_F(DatabaseTest, GivesBackEveryValueAsBound) {
  const std::string withZero("a\0b", 3);
  Transaction transaction(database);
  transaction.execute("INSERT INTO things VALUES (?, ?)", withZero, INT64_MIN);
  transaction.execute("INSERT INTO things VALUES (?, ?)", "", std::optional<std::int64_t>());
  auto rows = transaction.query("SELECT text, number FROM things ORDER BY rowid");
  ASSERT_TRUE(rows.next());
  EXPECT_EQ(rows.text(0), withZero);
  EXPECT_EQ(rows.integer(1), INT64_MIN);
  ASSERT_TRUE(rows.next());
  EXPECT_EQ(rows.text(0), "");
  EXPECT_EQ(rows.optionalInteger(1), std::nullopt);
  EXPECT_FALSE(rows.next());
}

TEST_F(DatabaseTest, UndoesWhatIsNotCommitted) {
  { Transaction(database).execute("INSERT INTO things VALUES ('x', 1)"); }
  EXPECT_EQ(count(), 0);
}

TEST_F(DatabaseTest, BoundTextIsNeverRead) {
  Transaction transaction(database);
  transaction.execute("INSERT INTO things VALUES (?, 1)", "'); DROP TABLE things; --");
  transaction.commit();
  auto rows = transaction.query("SELECT text FROM things");
  ASSERT_TRUE(rows.next());
  EXPECT_EQ(rows.text(0), "'); DROP TABLE things; --");
}

TEST_F(DatabaseTest, SaysWhatIsWrong) {
  Transaction transaction(database);
  EXPECT_THROW(transaction.execute("INSERT INTO nothing VALUES (1)"), std::runtime_error);
}

TEST(DatabaseFileTest, IsForItsOwnerOnly) {
  const TemporaryFolder folder;
  const Database database(folder.file("notes.db").string());
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(folder.file("notes.db")).permissions(),
            perms::owner_read | perms::owner_write);
}

TEST(DatabaseFileTest, ThatCannotBeOpenedThrows) {
  const TemporaryFolder folder;
  EXPECT_THROW(Database(folder.file("no/such/folder").string()), std::runtime_error);
}

}  // namespace
}  // namespace notewick::service
