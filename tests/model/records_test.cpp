#include "model/records.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(Records, ParticipantsDifferWhenOneFieldDiffers) {
  const Participant tobias{"1", "Tobias", "Hargreave"};
  EXPECT_EQ(tobias, (Participant{"1", "Tobias", "Hargreave"}));
  EXPECT_NE(tobias, (Participant{"1", "Tobias", "Hargreaves"}));
  EXPECT_NE(tobias, (Participant{"1", "tobias", "Hargreave"}));
  EXPECT_NE(tobias, (Participant{"2", "Tobias", "Hargreave"}));
}

TEST(Records, ParticipantsAreComparedByteByByte) {
  EXPECT_NE((Participant{"1", "Ren\u00e9", "B"}), (Participant{"1", "Rene\u0301", "B"}));
}

TEST(Records, DisplayNameKeepsCaseAndBlanks) {
  EXPECT_EQ((Participant{"1", "Lena", "O'Keefe"}).name(), "Lena O'Keefe");
  EXPECT_EQ((Participant{"1", "Tobias ", "Hargreave"}).name(), "Tobias  Hargreave");
  EXPECT_EQ((Participant{"1", "", ""}).name(), " ");
}

TEST(Records, ANewOutboxItemHasNoAttemptsAndNoError) {
  const OutboxItem item{"A", "1", "Lena O'Keefe", "Phoned", 30, "2024-05-02"};
  EXPECT_EQ(item.attempts, 0);
  EXPECT_FALSE(item.lastError);
}

}  // namespace
}  // namespace notewick
