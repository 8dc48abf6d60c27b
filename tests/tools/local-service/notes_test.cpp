#include "tools/local-service/notes.h"

#include <gtest/gtest.h>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

Note note(const std::string& id, const std::string& input = "Rang") {
  return {.id = id,
          .participant = {"p-1", "Zoë", "Lindqvist"},
          .input = input,
          .minutes = 15,
          .sessionDate = "2026-03-05",
          .capturedAt = Time(std::chrono::milliseconds(1'770'000'000'123))};
}

class NotesTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::string file = folder.file("notes.db").string();
  Database database{file};
  Accounts accounts{database};
  Notes notes{database};
  AccountId dana = accounts.save("dana@example.org", "x");
};

TEST_F(NotesTest, AreGivenBackWhole) {
  const auto whole = note("n-1", "A line\nand <b>another</b> – 🙂");
  notes.add(dana, whole);
  EXPECT_EQ(notes.all(), std::vector{whole});
}

TEST_F(NotesTest, StandNewestFirstAlsoWhenCapturedAtOneInstant) {
  for (const auto* const id : {"n-1", "n-2", "n-3"}) notes.add(dana, note(id));
  EXPECT_EQ(notes.newestFirst(dana), (std::vector{note("n-3"), note("n-2"), note("n-1")}));
}

TEST_F(NotesTest, BelongToTheirAccount) {
  const auto eli = accounts.save("eli@example.org", "x");
  notes.add(dana, note("n-1"));
  notes.add(eli, note("n-2"));
  EXPECT_EQ(notes.newestFirst(eli), std::vector{note("n-2")});
  EXPECT_EQ(notes.all().size(), 2U);
}

TEST_F(NotesTest, SurviveInTheirFile) {
  notes.add(dana, note("n-1"));
  Database again(file);
  EXPECT_EQ(Notes(again).all(), std::vector{note("n-1")});
}

}  // namespace
}  // namespace notewick::service
