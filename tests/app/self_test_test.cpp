#include "app/self_test.h"

#include <gmock/gmock.h>

#include <sstream>

#include "tests/support/world.h"

namespace notewick {
namespace {

using SelfTestTest = WorldTest;

TEST_F(SelfTestTest, PrintsWhatTheMatcherRecognisesAndTheBaseUrlInForce) {
  defaults.setString("VELKBaseURL", "https://velk.test/");
  std::ostringstream out;
  runSelfTest(out);
  EXPECT_EQ(out.str(),
            "  \"RE: support hours — Tobias Hargreave - Outlook\" -> [\"Tobias Hargreave\"]\n"
            "  \"Hargreave, Tobias - RecordHub\" -> [\"Tobias Hargreave\"]\n"
            "  \"tobias hargreave — Messages\" -> [\"Tobias Hargreave\"]\n"
            "  \"Lena O'Keefe plan review.docx\" -> [\"Lena O'Keefe\"]\n"
            "  \"Random unrelated window\" -> []\n"
            "Base URL: https://velk.test\n");
}

TEST_F(SelfTestTest, IsWantedByItsArgumentAnywhereAndByNothingElse) {
  EXPECT_TRUE(wantsSelfTest({"--selftest"}));
  EXPECT_TRUE(wantsSelfTest({"-x", "file", "--selftest", "--other"}));
  EXPECT_FALSE(wantsSelfTest({}));
  for (const auto* const argument :
       {"--SELFTEST", "-selftest", "selftest", "--selftest=1", "--selftest ", "--self-test"})
    EXPECT_FALSE(wantsSelfTest({argument})) << argument;
}

}  // namespace
}  // namespace notewick
