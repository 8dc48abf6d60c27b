#include "model/records.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(Records, ParticipantsAreEqualWhenEveryFieldIsByteByByte) {
  const Participant rene{"1", "Ren\u00e9", "Hargreave"};
  EXPECT_EQ(rene, (Participant{"1", "Ren\u00e9", "Hargreave"}));
  EXPECT_NE(rene, (Participant{"2", "Ren\u00e9", "Hargreave"}));
  EXPECT_NE(rene, (Participant{"1", "Rene\u0301", "Hargreave"}));
  EXPECT_NE(rene, (Participant{"1", "Ren\u00e9", "hargreave"}));
}

TEST(Records, TheDisplayNameKeepsCaseAndBlanks) {
  EXPECT_EQ((Participant{"1", "Tobias ", "Hargreave"}).name(), "Tobias  Hargreave");
}

TEST(Records, ANewOutboxItemHasNoAttemptsAndNoError) {
  const OutboxItem item{"A", "1", "Lena O'Keefe", "Phoned", 30, "2024-05-02"};
  EXPECT_EQ(item.attempts, 0);
  EXPECT_EQ(item.lastError, std::nullopt);
}

}  // namespace
}  // namespace notewick
