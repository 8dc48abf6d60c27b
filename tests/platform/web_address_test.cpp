#include "platform/web_address.h"

#include <gtest/gtest.h>

#include <string>

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
        "https://ada@velk.example:8443/x", "http://[2001:db8::1]:80/", "https://7"})
    EXPECT_TRUE(isWebAddress(text)) << text;
}

TEST(WebAddress, RefusesEverythingElse) {
  for (const auto* const text :
       {"", "/case-notes", "velk.example/case-notes", "//velk.example/x", "ftp://velk.example",
        "javascript:alert(1)", "httpss://x", "xhttp://x", "https:velk.example",
        "https:/velk.example", "https://", "https:///case-notes", "https://:443/case-notes",
        "https://ada@/x", "https://ada@:443/x", "https://?x", "ftp:https://velk.example",
        "http:/x/http://velk.example"})
    EXPECT_FALSE(isWebAddress(text)) << text;
}

TEST(LoopbackAddress, IsThisMachineOverHttpOrHttps) {
  for (const std::string host :
       {"localhost", "LocalHost:80", "localhost:", "localhost?x", "localhost#x", "velk.localhost",
        "a-z_9.velk.LOCALHOST:8080/x", "AZ.LOCALHOST", "127.0.0.1", "127.0.0.0:8080/api",
        "127.255.255.255/", "[::1]", "[::1]:8080/x"}) {
    EXPECT_TRUE(isLoopbackAddress("http://" + host)) << host;
    EXPECT_TRUE(isLoopbackAddress("HTTPS://" + host)) << host;
  }
  for (const std::string scheme : {"", "//", "http:", "http:/", "ftp://", "httpx://", "xhttp://",
                                   " http://", "ftp:http://", "ftp:https://"})
    EXPECT_FALSE(isLoopbackAddress(scheme + "localhost")) << scheme;
}

TEST(LoopbackAddress, IsNoOtherMachine) {
  for (const std::string host : {"", "/", ":80/", "velk.example", "192.168.0.1", "126.255.255.255",
                                 "128.0.0.1", "0.0.0.0", "[::2]", "[2001:db8::1]"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

TEST(LoopbackAddress, IsNotWhereTheNameStandsElsewhere) {
  for (const std::string host :
       {"localhost@velk.example", "localhost:80@velk.example", "velk.example@localhost",
        "ada:x@127.0.0.1", "@localhost", "localhost.velk.example", "velklocalhost", "localhostvelk",
        "velk.example/localhost", "velk.example?http://localhost", "velk.example#@localhost",
        "127.velk.example", "127.0.0.1.velk.example", "x127.0.0.1"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

TEST(LoopbackAddress, IsNotBehindEscapesBlanksAndOddPorts) {
  for (const std::string host :
       {"localhost%2evelk.example", "velk.example%2f.localhost", "%6cocalhost", "localhost%00",
        "localhost\\@velk.example", "velk.example\\.localhost", "local host", " localhost",
        "localhost ", "localhost:80a", "localhost:80:80"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

// Programs disagree about these spellings of it.
TEST(LoopbackAddress, IsNotANameWithOtherDots) {
  for (const std::string host : {"localhost.", "velk.localhost.", ".localhost", "a..localhost"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

TEST(LoopbackAddress, IsNotANumberSpeltOtherwise) {
  for (const std::string host :
       {"127.1", "127.0.1", "127.0.0.1.", "127.0.0.01", "127.0.0.256", "127.0.256.0", "127.256.0.0",
        "127.0.0", "127.0.0.", "127..0.1", "127.0.0.0.1", "127.0.0.+1", "127.0.0.-1", "0127.0.0.1",
        "0x7f.0.0.1", "127.0.0.0x1", "2130706433", "127.0.0.99999999999"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

TEST(LoopbackAddress, IsNotABracketedAddressSpeltOtherwise) {
  for (const std::string host :
       {"[::0001]", "[0:0:0:0:0:0:0:1]", "[::ffff:127.0.0.1]", "[::1%25lo]", "::1", "[::1",
        "[::1].localhost", "[127.0.0.1]", "[localhost]"})
    EXPECT_FALSE(isLoopbackAddress("http://" + host)) << host;
}

TEST(SecureAddress, IsHttpsToAnywhereAndHttpToThisMachine) {
  for (const auto* const text : {"https://velk.example", "HTTPS://192.0.2.7:8443/",
                                 "https://localhost.", "http://localhost:8080/velk"})
    EXPECT_TRUE(isSecureAddress(text)) << text;
  for (const auto* const text : {"http://velk.example", "http://localhost.", "ftp://localhost",
                                 "localhost", "https:velk.example", "ftp:https://velk.example", ""})
    EXPECT_FALSE(isSecureAddress(text)) << text;
}

}  // namespace
}  // namespace notewick
