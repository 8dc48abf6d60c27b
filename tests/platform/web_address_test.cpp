#include "platform/web_address.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(UriOrigin, TheOriginIsSchemeAndAuthority) {
  EXPECT_EQ(uriOrigin("https://velk.example"), "https://velk.example");
  EXPECT_EQ(uriOrigin("https://velk.example/"), "https://velk.example");
  EXPECT_EQ(uriOrigin("http://127.0.0.1:8080/velk/deep"), "http://127.0.0.1:8080");
  EXPECT_EQ(uriOrigin("https://velk.example?q=/"), "https://velk.example");
  EXPECT_EQ(uriOrigin("https://velk.example#a/b"), "https://velk.example");
}

TEST(UriOrigin, WhereThereIsNoOriginTheTextStays) {
  EXPECT_EQ(uriOrigin(""), "");
  EXPECT_EQ(uriOrigin("velk.example/x"), "velk.example/x");
}

TEST(WebAddress, TakesHttpAndHttpsWithAHost) {
  for (const auto* const text :
       {"https://velk.example", "http://velk.example/case-notes", "HTTPS://VELK.EXAMPLE",
        "https://velk.example:8443/x", "https://ada@velk.example", "http://[2001:db8::1]:80/",
        "https://127.0.0.1", "https://7"})
    EXPECT_TRUE(isWebAddress(text)) << text;
}

TEST(WebAddress, RefusesEverythingElse) {
  for (const auto* const text : {"",
                                 "/case-notes",
                                 "velk.example/case-notes",
                                 "//velk.example/x",
                                 "ftp://velk.example",
                                 "file:///etc/passwd",
                                 "javascript:alert(1)",
                                 "mailto:ada@velk.example",
                                 "httpss://x",
                                 "xhttp://x",
                                 "https:velk.example",
                                 "https:/velk.example",
                                 "https://",
                                 "https:///case-notes",
                                 "https://:443/case-notes",
                                 "https://ada@/x",
                                 "https://ada@:443/x",
                                 "https://?x",
                                 "ftp:https://velk.example",
                                 "x-run:http://velk.example",
                                 "http:/x/http://velk.example"})
    EXPECT_FALSE(isWebAddress(text)) << text;
}

TEST(LoopbackAddress, LeadsToThisMachineOverEitherScheme) {
  for (const auto* const text : {"http://localhost:8080/x", "https://localhost:8443/x",
                                 "HTTPS://velk.LocalHost", "https://127.0.0.2", "https://[::1]:80"})
    EXPECT_TRUE(isLoopbackAddress(text)) << text;
}

TEST(LoopbackAddress, LeadsToNoOtherMachineAndOverNoOtherScheme) {
  for (const auto* const text :
       {"https://velk.example", "https://127.velk.example", "https://localhost@velk.example",
        "https://[::2]", "localhost", "ftp://localhost", ""})
    EXPECT_FALSE(isLoopbackAddress(text)) << text;
}

TEST(SecureAddress, HttpsIsSecureToAnywhere) {
  for (const auto* const text :
       {"https://velk.example", "HTTPS://velk.example/api", "https://192.0.2.7:8443/",
        "https://[2001:db8::1]/", "https://ada@velk.example", "https://localhost."})
    EXPECT_TRUE(isSecureAddress(text)) << text;
}

TEST(SecureAddress, PlainHttpIsSecureToThisMachine) {
  for (const auto* const text :
       {"http://localhost", "http://localhost/", "http://localhost:8080/velk",
        "http://localhost:", "HTTP://LocalHost:80", "http://velk.localhost",
        "http://a-b_1.velk.LOCALHOST:8080/x", "http://127.0.0.1", "http://127.0.0.1:8080/api",
        "http://127.0.0.0", "http://127.255.255.255/", "http://127.1.2.3", "http://[::1]",
        "http://[::1]:8080/x", "http://localhost?x", "http://localhost#x"})
    EXPECT_TRUE(isSecureAddress(text)) << text;
}

TEST(SecureAddress, PlainHttpToAnotherMachineIsNot) {
  for (const auto* const text :
       {"http://velk.example", "http://velk.example:80/api", "HTTP://velk.example",
        "http://192.168.0.1", "http://10.0.0.1", "http://128.0.0.1", "http://126.255.255.255",
        "http://0.0.0.0", "http://[::2]", "http://[2001:db8::1]", "http://", "http:///",
        "http://:80/"})
    EXPECT_FALSE(isSecureAddress(text)) << text;
}

TEST(SecureAddress, WhatOnlyLooksLikeThisMachineIsNot) {
  for (const auto* const text : {"http://localhost@velk.example",
                                 "http://localhost:80@velk.example",
                                 "http://velk.example@localhost",
                                 "http://ada:x@127.0.0.1",
                                 "http://@localhost",
                                 "http://localhost.velk.example",
                                 "http://velklocalhost",
                                 "http://localhostvelk",
                                 "http://velk.example/localhost",
                                 "http://velk.example?http://localhost",
                                 "http://velk.example#@localhost",
                                 "http://localhost%2evelk.example",
                                 "http://velk.example%2f.localhost",
                                 "http://%6cocalhost",
                                 "http://localhost%00",
                                 "http://localhost\\@velk.example",
                                 "http://velk.example\\.localhost",
                                 "http://local host",
                                 "http:// localhost",
                                 "http://localhost ",
                                 "http://localhost:80a",
                                 "http://localhost:80:80",
                                 "http://127.0.0.1.velk.example",
                                 "http://127.0.0.1@x",
                                 "http://x127.0.0.1"})
    EXPECT_FALSE(isSecureAddress(text)) << text;
}

TEST(SecureAddress, OtherSpellingsOfThisMachineDoNotCount) {
  for (const auto* const text : {"http://localhost.",
                                 "http://velk.localhost.",
                                 "http://.localhost",
                                 "http://a..localhost",
                                 "http://127.1",
                                 "http://127.0.1",
                                 "http://127.0.0.1.",
                                 "http://127.0.0.01",
                                 "http://127.0.0.256",
                                 "http://127.0.0",
                                 "http://127.0.0.",
                                 "http://127..0.1",
                                 "http://127.0.0.0.1",
                                 "http://127.0.0.+1",
                                 "http://127.0.0.-1",
                                 "http://0127.0.0.1",
                                 "http://0x7f.0.0.1",
                                 "http://127.0.0.0x1",
                                 "http://2130706433",
                                 "http://0x7f000001",
                                 "http://127.0.0.99999999999",
                                 "http://[::0001]",
                                 "http://[0:0:0:0:0:0:0:1]",
                                 "http://[::ffff:127.0.0.1]",
                                 "http://[::1%25lo]",
                                 "http://[::1%lo]",
                                 "http://::1",
                                 "http://[::1",
                                 "http://[::1].localhost",
                                 "http://[127.0.0.1]",
                                 "http://[localhost]"})
    EXPECT_FALSE(isSecureAddress(text)) << text;
}

TEST(SecureAddress, OtherSchemesAndNoneAreNot) {
  for (const auto* const text :
       {"", "/", "/api/desktop", "localhost", "localhost:8080", "//localhost/x", "ftp://localhost",
        "ws://localhost", "file:///x", "http:localhost", "http:/localhost", "https:velk.example",
        "httpx://localhost", "xhttp://localhost", " http://localhost", "ftp:http://localhost",
        "ftp:https://velk.example"})
    EXPECT_FALSE(isSecureAddress(text)) << text;
}

}  // namespace
}  // namespace notewick
