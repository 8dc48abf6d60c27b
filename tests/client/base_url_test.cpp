#include "client/base_url.h"

#include "tests/support/world.h"

namespace notewick {
namespace {

class BaseUrlTest : public WorldTest {
 protected:
  void baseIs(const std::string& text) { defaults.setString("VELKBaseURL", text); }
};

TEST_F(BaseUrlTest, WithoutASettingTheDefaultCounts) {
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
}

TEST_F(BaseUrlTest, TheSettingCounts) {
  baseIs("http://127.0.0.1:8080/velk");
  EXPECT_EQ(apiBaseURL(), "http://127.0.0.1:8080/velk");
}

TEST_F(BaseUrlTest, AnEmptyTextIsNotReplaced) {
  baseIs("");
  EXPECT_EQ(apiBaseURL(), "");
}

TEST_F(BaseUrlTest, ASettingThatIsNoTextCountsAsAbsent) {
  defaults.values["VELKBaseURL"] = 7.0;
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
  defaults.values["VELKBaseURL"] = true;
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
}

TEST_F(BaseUrlTest, ExactlyOneTrailingSlashIsRemoved) {
  baseIs("https://velk.test/");
  EXPECT_EQ(apiBaseURL(), "https://velk.test");
  baseIs("https://velk.test//");
  EXPECT_EQ(apiBaseURL(), "https://velk.test/");
  baseIs("/");
  EXPECT_EQ(apiBaseURL(), "");
}

TEST_F(BaseUrlTest, IsReadAnewAtEveryCall) {
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
  baseIs("https://a.test");
  EXPECT_EQ(apiBaseURL(), "https://a.test");
  defaults.remove("VELKBaseURL");
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
}

TEST_F(BaseUrlTest, AServiceAddressIsBaseAndPath) {
  baseIs("https://velk.test/");
  EXPECT_EQ(serviceURL("/api/desktop/participants"), "https://velk.test/api/desktop/participants");
  baseIs("https://velk.test/sub");
  EXPECT_EQ(serviceURL("/case-notes"), "https://velk.test/sub/case-notes");
}

TEST_F(BaseUrlTest, TheLoginPageIsAtTheOrigin) {
  EXPECT_EQ(loginPageURL(), "https://velk.example/login");
  baseIs("http://127.0.0.1:8080/velk/deep/");
  EXPECT_EQ(loginPageURL(), "http://127.0.0.1:8080/login");
}

using BaseUrlDeathTest = BaseUrlTest;

TEST_F(BaseUrlDeathTest, ATextThatIsNoAddressEndsTheProgram) {
  for (const auto* const bad : {"https://velk test", "https://velk.test/<>", "http://[::1",
                                "https://velk.test/%zz", "https://v\u00e9lk.test"}) {
    baseIs(bad);
    EXPECT_EXIT((void)serviceURL("/x"), testing::ExitedWithCode(1),
                "^notewick: VELKBaseURL[^\n]*\n$")
        << bad;
  }
}

}  // namespace
}  // namespace notewick
