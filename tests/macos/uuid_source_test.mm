#include "platform/macos/uuid_source.h"

#include <gtest/gtest.h>

#include <regex>

namespace notewick {
namespace {

TEST(MacosUuidSourceTest, GivesFreshRandomUuidsInUpperCase) {
  CocoaUuidSource uuids;
  const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  const std::string first = uuids.next();
  EXPECT_TRUE(std::regex_match(first, form)) << first;
  EXPECT_NE(uuids.next(), first);
}

}  // namespace
}  // namespace notewick
