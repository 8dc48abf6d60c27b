#include "tools/local-service/certificates.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

class CertificatesTest : public testing::Test {
 protected:
  [[nodiscard]] CertificateFiles ensure() const { return ensureCertificates(folder.file("a/tls")); }

  [[nodiscard]] std::string authority() const {
    std::ifstream stream(folder.file("a/tls/ca.pem"));
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  TemporaryFolder folder;
  CertificateFiles files = ensure();
};

TEST_F(CertificatesTest, LeaveNoKeyOfTheAuthorityBehind) {
  EXPECT_TRUE(authority().starts_with("-----BEGIN CERTIFICATE-----"));
  EXPECT_EQ(authority().find("PRIVATE KEY"), std::string::npos);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.file("a/tls")), {}), 3);
}

TEST_F(CertificatesTest, AreKeptWhileTheirAuthorityStands) {
  const auto before = authority();
  std::ignore = ensure();
  EXPECT_EQ(authority(), before);
  std::filesystem::resize_file(files.authority, 100);
  std::ignore = ensure();
  EXPECT_NE(authority(), before);
  EXPECT_GT(authority().size(), 100U);
  EXPECT_NO_THROW(Listener(0, files, {}));
}

TEST_F(CertificatesTest, SayWhenTheyCannotBeWrittenOrUsed) {
  std::ofstream(folder.file("taken")) << "a file";
  EXPECT_THROW(std::ignore = ensureCertificates(folder.file("taken")), std::exception);
  std::filesystem::remove(files.key);
  EXPECT_THROW(Listener(0, files, {}), std::runtime_error);
}

}  // namespace
}  // namespace notewick::service
