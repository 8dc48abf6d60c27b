// What crosses the bus in a session with a service that offers encryption, and with one that offers
// it and breaks it.
#include "tests/platform/linux/secret_store_fixture.h"

namespace notewick {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

/// The prime of the group (RFC 2409, 6.2) with its last byte, which is FF, set to this.
QByteArray primeEndingWith(char last) {
  const auto beginning = QByteArray::fromHex(
      "FFFFFFFFFFFFFFFFC90FDAA22168C234C4C6628B80DC1CD129024E088A67CC74020BBEA63B139B22514A08798E34"
      "04DDEF9519B3CD3A431B302B0A6DF25F14374FE1356D6D51C245E485B576625E7EC6F44C42E9A637ED6B0BFF5CB6"
      "F406B7EDEE386BFB5A899FA5AE9F24117C4B1FE649286651ECE65381FFFFFFFFFFFFFF");
  return beginning + last;
}

class EncryptedSessionTest : public ScriptedServiceTest {
 protected:
  EncryptedSessionTest() { serviceIs("--encrypting"); }

  static std::vector<std::string> crossed() {
    std::vector<std::string> texts;
    for (const auto& bytes : qdbus_cast<QByteArrayList>(control("Crossed").value(0))) {
      texts.push_back(bytes.toStdString());
    }
    return texts;
  }

  void expectNothingIsHandedOverWithTheKey(const QVariant& key) {
    control("AnswerKey", {QVariant::fromValue(QDBusVariant(key))});
    EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::failed);
    control("Put", {tokenAttributes(), "old"});
    EXPECT_EQ(store_.save(TOKEN, "s3cr3t"), SecretWrite::failed);
    EXPECT_EQ(loaded(), "absent");
    EXPECT_EQ(store_.remove(TOKEN), SecretWrite::done);
    EXPECT_THAT(crossed(), SizeIs(0));
    EXPECT_THAT(calls(), Not(Contains(AnyOf(QString("CreateItem"), QString("SetSecret")))));
    EXPECT_EQ(calls().count("Close"), calls().count("OpenSession"));
  }
};

TEST_F(EncryptedSessionTest, SecretsCrossTheBusSealed) {
  for (const char* secret : {"s3cr3t-token", "s3cr3t-token that replaces it"}) {
    EXPECT_EQ(store_.save(TOKEN, secret), SecretWrite::done);
    EXPECT_EQ(loaded(), std::string("found ") + secret);
  }
  EXPECT_THAT(crossed(), SizeIs(4));
  EXPECT_THAT(crossed(), Each(Not(HasSubstr("s3cr3t"))));
  EXPECT_EQ(calls().count("OpenSession"), 4);
}

TEST_F(EncryptedSessionTest, NothingIsHandedOverWithAKeyThatGivesItAway) {
  const QByteArray one(1, '\1');
  for (const QByteArray& key :
       {QByteArray(), QByteArray(128, '\0'), one, primeEndingWith('\xFE'), primeEndingWith('\xFF'),
        primeEndingWith('\xFF') + '\0', QByteArray(10'000, 'k')}) {
    SCOPED_TRACE(key.left(200).toHex().toStdString());
    expectNothingIsHandedOverWithTheKey(key);
  }
}

TEST_F(EncryptedSessionTest, NothingIsHandedOverWhereTheKeyHasAnotherType) {
  const QStringList list{"a", "b"};
  for (const QVariant& key : std::initializer_list<QVariant>{"a text", 7U, true, 2.5, list}) {
    SCOPED_TRACE(key.typeName());
    expectNothingIsHandedOverWithTheKey(key);
  }
}

TEST_F(EncryptedSessionTest, WhatIsNotSealedAsItShouldBeCountsAsAbsent) {
  control("Put", {tokenAttributes(), "s3cr3t"});
  for (const char* fault : {"no vector", "a short vector", "a long vector", "no value",
                            "half a block", "a padding of 0", "a padding of 17"}) {
    control("SealBadly", {fault});
    EXPECT_EQ(loaded(), "absent") << fault;
  }
  control("SealBadly", {""});
  EXPECT_EQ(loaded(), "found s3cr3t");
}

}  // namespace
}  // namespace notewick
