#include "tools/local-service/secrets.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace notewick::service {
namespace {

TEST(SecretsTest, TokensAreLongUrlSafeAndNeverTheSame) {
  const std::regex form("[A-Za-z0-9_-]{43}");
  std::set<std::string> tokens;
  for (int at = 0; at < 1000; ++at) {
    const auto token = randomToken();
    EXPECT_TRUE(std::regex_match(token, form)) << token;
    tokens.insert(token);
  }
  EXPECT_EQ(tokens.size(), 1000U);
}

TEST(SecretsTest, UuidsHaveTheirFormAndVersion) {
  const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
  EXPECT_TRUE(std::regex_match(randomUuid(), form));
  EXPECT_NE(randomUuid(), randomUuid());
}

TEST(SecretsTest, FingerprintsAreSha256) {
  EXPECT_EQ(fingerprint("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(SecretsTest, AHashKnowsItsPasswordOnly) {
  const auto hash = hashPassword("pässword");
  EXPECT_TRUE(passwordMatches("pässword", hash));
  EXPECT_FALSE(passwordMatches("password", hash));
  EXPECT_FALSE(passwordMatches("", hash));
  EXPECT_TRUE(passwordMatches("", hashPassword("")));
}

TEST(SecretsTest, TheSamePasswordHashesDifferentlyEachTime) {
  EXPECT_NE(hashPassword("x"), hashPassword("x"));
}

TEST(SecretsTest, AHashThatCannotBeReadMatchesNothing) {
  EXPECT_FALSE(passwordMatches("", ""));
  EXPECT_FALSE(passwordMatches("x", "x"));
}

}  // namespace
}  // namespace notewick::service
