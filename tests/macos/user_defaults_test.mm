#include "platform/macos/user_defaults.h"

#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

class MacosUserDefaultsTest : public testing::Test {
 protected:
  ~MacosUserDefaultsTest() override { [database_ removePersistentDomainForName:suite_]; }

  NSString* suite_ = [@"tools.velk.notewick.test." stringByAppendingString:NSUUID.UUID.UUIDString];
  NSUserDefaults* database_ = [[NSUserDefaults alloc] initWithSuiteName:suite_];
  CocoaUserDefaults defaults_{database_};
};

TEST_F(MacosUserDefaultsTest, ReadsBackWhatWasStoredAndAnEmptyTextIsOne) {
  defaults_.setString("VELKBaseURL", "");
  defaults_.setBoolean("VELKWidgetVisible", false);
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "");
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), false);
  defaults_.remove("VELKBaseURL");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, TakesNoValueForOneOfAnotherType) {
  const auto expectNothing = [this] {
    EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
    EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  };
  for (NSString* key in @[ @"VELKWidgetVisible", @"VELKBaseURL" ]) {
    [database_ setInteger:1 forKey:key];
  }
  expectNothing();
  [database_ setObject:@"YES" forKey:@"VELKWidgetVisible"];
  [database_ setBool:YES forKey:@"VELKBaseURL"];
  expectNothing();
}

TEST_F(MacosUserDefaultsTest, SeesWhatAnotherObjectWrites) {
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  [[[NSUserDefaults alloc] initWithSuiteName:suite_] setObject:@"https://velk.example"
                                                        forKey:@"VELKBaseURL"];
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://velk.example");
}

TEST(MacosArgumentsTest, AreNoSettingsAndOpenNoDocuments) {
  NSUserDefaults* database = NSUserDefaults.standardUserDefaults;
  [database removeVolatileDomainForName:NSArgumentDomain];
  [database setVolatileDomain:@{@"VELKBaseURL" : @"https://argument.example"}
                      forName:NSArgumentDomain];
  ASSERT_EQ(CocoaUserDefaults(database).string("VELKBaseURL"), "https://argument.example");
  EXPECT_EQ(CocoaUserDefaults(withoutArguments(database)).string("VELKBaseURL"), std::nullopt);
  EXPECT_FALSE([withoutArguments(database) boolForKey:@"NSTreatUnknownArgumentsAsOpen"]);
}

}  // namespace
}  // namespace notewick
