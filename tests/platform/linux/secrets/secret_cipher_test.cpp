#include "platform/linux/secrets/secret_cipher.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

/// The two sides of a session, which have agreed on a key.
struct SecretCipherTest : testing::Test {
  SecretCipherTest() {
    EXPECT_TRUE(program.agree(service.publicKey()));
    EXPECT_TRUE(service.agree(program.publicKey()));
  }
  SecretCipher program;
  SecretCipher service;
};

TEST_F(SecretCipherTest, WhatOneSideSealsTheOtherOpens) {
  for (const std::string& secret :
       {std::string(), std::string("s3cr3t"), std::string(16, 'x'), std::string("\0\xff", 2)}) {
    EXPECT_EQ(service.open(*program.seal(secret)), secret);
    EXPECT_EQ(program.open(*service.seal(secret)), secret);
  }
}

TEST_F(SecretCipherTest, NothingOfTheSecretIsSeenAndNothingRepeats) {
  const std::string secret(64, 's');
  const auto sealed = *program.seal(secret);
  EXPECT_FALSE(sealed.value.contains("ss"));
  EXPECT_NE(program.seal(secret)->value, sealed.value);
  EXPECT_NE(SecretCipher().publicKey(), program.publicKey());
}

TEST_F(SecretCipherTest, WhatWasSealedOtherwiseIsNotOpened) {
  const auto sealed = *program.seal("s3cr3t");
  SecretCipher other;
  EXPECT_TRUE(other.agree(service.publicKey()));
  EXPECT_NE(other.open(sealed), "s3cr3t");
  EXPECT_EQ(service.open({{}, sealed.value}), std::nullopt);
  EXPECT_EQ(service.open({sealed.parameters, sealed.value.chopped(1)}), std::nullopt);
  EXPECT_EQ(service.open({sealed.parameters, {}}), std::nullopt);
}

TEST_F(SecretCipherTest, KeysThatGiveTheSecretAwayAreRefused) {
  const QByteArray tooLarge(128, '\xff');
  for (const QByteArray& key :
       {QByteArray(), QByteArray(1, '\0'), QByteArray(1, '\1'), tooLarge, QByteArray(200, 'k')}) {
    EXPECT_FALSE(SecretCipher().agree(key)) << key.toHex().toStdString();
  }
}

}  // namespace
}  // namespace notewick
