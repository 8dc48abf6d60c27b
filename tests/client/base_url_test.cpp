#include "client/base_url.h"

#include "tests/support/world.h"

namespace notewick {
namespace {

class BaseUrlTest : public WorldTest {
 protected:
  void baseIs(const std::string& text) { defaults.setString("VELKBaseURL", text); }
};

TEST_F(BaseUrlTest, WithoutATextInTheSettingsTheDefaultCounts) {
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
  defaults.values["VELKBaseURL"] = true;
  EXPECT_EQ(apiBaseURL(), "https://velk.example");
}

TEST_F(BaseUrlTest, ATextInTheSettingsLosesExactlyOneTrailingSlash) {
  const std::pair<const char*, const char*> rows[] = {
      {"http://127.0.0.1:8080/velk", "http://127.0.0.1:8080/velk"},
      {"https://velk.test/", "https://velk.test"},
      {"https://velk.test//", "https://velk.test/"},
      {"/", ""},
      {"", ""},
  };
  for (const auto& [setting, base] : rows) {
    baseIs(setting);
    EXPECT_EQ(apiBaseURL(), base);
  }
}

TEST_F(BaseUrlTest, AServiceAddressIsBaseAndPath) {
  baseIs("https://velk.test/sub/");
  EXPECT_EQ(serviceURL("/case-notes"), "https://velk.test/sub/case-notes");
}

TEST_F(BaseUrlTest, TheLoginPageIsAtTheOrigin) {
  baseIs("http://127.0.0.1:8080/velk/deep/");
  EXPECT_EQ(loginPageURL(), "http://127.0.0.1:8080/login");
}

using BaseUrlDeathTest = BaseUrlTest;

TEST_F(BaseUrlDeathTest, ATextThatIsNoAddressEndsTheProgramWithOneLine) {
  baseIs("https://velk test/");
  EXPECT_EXIT((void)serviceURL("/x"), testing::ExitedWithCode(1),
              "^notewick: VELKBaseURL is no valid address: https://velk test\n$");
}

}  // namespace
}  // namespace notewick
