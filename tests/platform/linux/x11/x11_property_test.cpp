#include "platform/linux/x11/x11_property.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

std::optional<X11Property> property(int bitsPerUnit, const std::string& bytes,
                                    std::optional<X11Atom> type = X11Atom::utf8String) {
  return X11Property{.type = type, .bitsPerUnit = bitsPerUnit, .bytes = bytes};
}

TEST(X11Properties, OnlyWhole32BitNumbersAreNumbers) {
  EXPECT_EQ(property(32, std::string(8, '\0'))->numbers(), std::vector<std::uint32_t>({0, 0}));
  EXPECT_EQ(property(32, std::string(7, '\0'))->firstNumber(), 0u);
  for (const auto& strange : {property(32, "abc"), property(32, ""), property(16, "abcd")})
    EXPECT_EQ(strange->firstNumber(), std::nullopt);
}

TEST(X11Properties, TheTitleIsTheFirstPropertyThatIsAText) {
  const std::vector none = {property(0, ""), property(0, "")};
  const std::vector numbers = {property(32, "abcd"), property(8, "\xe9", X11Atom::string)};
  const std::vector unknown = {property(8, "é", std::nullopt), property(8, "other")};
  const std::vector<std::optional<X11Property>> gone = {property(8, "title"), std::nullopt};
  EXPECT_EQ(titleIn(none), "");
  EXPECT_EQ(titleIn(numbers), "é");
  EXPECT_EQ(titleIn(unknown), "é");
  EXPECT_EQ(titleIn(gone), std::nullopt);
}

}  // namespace
}  // namespace notewick
