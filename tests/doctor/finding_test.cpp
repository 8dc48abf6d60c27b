#include "doctor/finding.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(FindingLine, BeginsWithOkOrTodoAndNamesTheCheck) {
  EXPECT_EQ(lineOf("tray", fine("takes embedded icons")), "ok    tray: takes embedded icons");
  EXPECT_EQ(lineOf("tray", toDo("none. Add one.")), "todo  tray: none. Add one.");
}

TEST(FindingLine, IsOneLineWhateverTheTextIsMadeOf) {
  EXPECT_EQ(lineOf("proxy", fine("a\nok    b\x1b[2J\x7f é")), "ok    proxy: a ok    b [2J  é");
}

}  // namespace
}  // namespace notewick
