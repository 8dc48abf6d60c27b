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

TEST_F(MacosUserDefaultsTest, HasNothingUnderAnAbsentKey) {
  EXPECT_EQ(defaults_.string("VELKUserEmail"), std::nullopt);
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, ReadsBackWhatWasStored) {
  defaults_.setString("VELKUserEmail", "dana@example.org");
  defaults_.setBoolean("VELKWidgetVisible", false);
  EXPECT_EQ(defaults_.string("VELKUserEmail"), "dana@example.org");
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), false);
}

TEST_F(MacosUserDefaultsTest, KeepsAnEmptyTextApartFromNoText) {
  defaults_.setString("VELKBaseURL", "");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "");
  defaults_.remove("VELKBaseURL");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, TakesNeitherNumberNorTextForABoolean) {
  [database_ setInteger:1 forKey:@"VELKWidgetVisible"];
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
  [database_ setObject:@"YES" forKey:@"VELKWidgetVisible"];
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, TakesNeitherNumberNorBooleanForAText) {
  [database_ setInteger:1 forKey:@"VELKBaseURL"];
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  [database_ setBool:YES forKey:@"VELKBaseURL"];
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
}

TEST_F(MacosUserDefaultsTest, SeesWhatAnotherObjectWrites) {
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  [[[NSUserDefaults alloc] initWithSuiteName:suite_] setObject:@"https://velk.example"
                                                        forKey:@"VELKBaseURL"];
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://velk.example");
}

TEST(MacosArgumentsTest, AreNoSettings) {
  NSUserDefaults* database = NSUserDefaults.standardUserDefaults;
  [database removeVolatileDomainForName:NSArgumentDomain];
  [database setVolatileDomain:@{@"VELKBaseURL" : @"https://argument.example"}
                      forName:NSArgumentDomain];
  ASSERT_EQ(CocoaUserDefaults(database).string("VELKBaseURL"), "https://argument.example");
  EXPECT_EQ(CocoaUserDefaults(withoutArguments(database)).string("VELKBaseURL"), std::nullopt);
}

TEST(MacosArgumentsTest, OpenNoDocuments) {
  NSUserDefaults* database = withoutArguments(NSUserDefaults.standardUserDefaults);
  EXPECT_FALSE([database boolForKey:@"NSTreatUnknownArgumentsAsOpen"]);
}

}  // namespace
}  // namespace notewick
