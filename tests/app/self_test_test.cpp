#include "app/self_test.h"

#include <gmock/gmock.h>

#include <sstream>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SelfTestTest : public WorldTest {
 protected:
  static std::vector<std::string> output() {
    std::ostringstream out;
    runSelfTest(out);
    EXPECT_TRUE(out.str().ends_with("\n"));
    return linesOf(out.str());
  }
};

TEST_F(SelfTestTest, PrintsWhatTheMatcherRecognises) {
  EXPECT_THAT(output(),
              ElementsAre("  \"RE: support hours — Tobias Hargreave - Outlook\" -> "
                          "[\"Tobias Hargreave\"]",
                          "  \"Hargreave, Tobias - RecordHub\" -> [\"Tobias Hargreave\"]",
                          "  \"tobias hargreave — Messages\" -> [\"Tobias Hargreave\"]",
                          "  \"Lena O'Keefe plan review.docx\" -> [\"Lena O'Keefe\"]",
                          "  \"Random unrelated window\" -> []", "Base URL: https://velk.example"));
}

TEST_F(SelfTestTest, ShowsTheBaseUrlInForce) {
  defaults.setString("VELKBaseURL", "https://velk.test/");
  EXPECT_EQ(output().back(), "Base URL: https://velk.test");
}

TEST_F(SelfTestTest, TouchesNothing) {
  EXPECT_EQ(output().size(), 6u);
  EXPECT_THAT(deeds, IsEmpty());
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(SelfTestTest, IsWantedByItsArgumentAnywhere) {
  EXPECT_TRUE(wantsSelfTest({"--selftest"}));
  EXPECT_TRUE(wantsSelfTest({"-x", "file", "--selftest", "--other"}));
}

TEST_F(SelfTestTest, IsWantedByNothingElse) {
  EXPECT_FALSE(wantsSelfTest({}));
  for (const auto* const argument :
       {"--SELFTEST", "-selftest", "selftest", "--selftest=1", "--selftest ", "--self-test"})
    EXPECT_FALSE(wantsSelfTest({argument})) << argument;
}

}  // namespace
}  // namespace notewick
