#include "tools/local-service/certificates.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using std::filesystem::perms;

std::string contentsOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class CertificatesTest : public testing::Test {
 protected:
  TemporaryFolder folder;
};

TEST_F(CertificatesTest, MakesTheFolderAndAKeyForItsOwnerOnly) {
  const auto files = ensureCertificates(folder.file("deep") / "tls");
  EXPECT_EQ(files.authority, folder.file("deep") / "tls" / "ca.pem");
  EXPECT_EQ(std::filesystem::status(files.key).permissions(),
            perms::owner_read | perms::owner_write);
  EXPECT_TRUE(contentsOf(files.certificate).starts_with("-----BEGIN CERTIFICATE-----"));
}

TEST_F(CertificatesTest, LeavesNoKeyOfTheAuthorityBehind) {
  const auto files = ensureCertificates(folder.path());
  EXPECT_EQ(contentsOf(files.authority).find("PRIVATE KEY"), std::string::npos);
  const std::filesystem::directory_iterator entries(folder.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 3);
}

TEST_F(CertificatesTest, KeepsWhatIsThere) {
  const auto before = contentsOf(ensureCertificates(folder.path()).authority);
  EXPECT_EQ(contentsOf(ensureCertificates(folder.path()).authority), before);
}

TEST_F(CertificatesTest, MakesAllAnewWhenAnythingIsMissingDamagedOrForeign) {
  TemporaryFolder other;
  const auto foreign = ensureCertificates(other.path());
  for (const auto* const name : {"ca.pem", "server.pem", "server.key"}) {
    for (const auto& damage :
         {std::string("gone"), std::string("damaged"), std::string("foreign")}) {
      const auto before = contentsOf(ensureCertificates(folder.path()).authority);
      if (damage == "gone") std::filesystem::remove(folder.file(name));
      if (damage == "damaged") std::filesystem::resize_file(folder.file(name), 100);
      if (damage == "foreign") {
        std::filesystem::copy_file(other.file(name), folder.file(name),
                                   std::filesystem::copy_options::overwrite_existing);
      }
      const auto after = contentsOf(ensureCertificates(folder.path()).authority);
      EXPECT_NE(after, before) << name << " " << damage;
      EXPECT_NE(after, contentsOf(foreign.authority)) << name << " " << damage;
      EXPECT_EQ(contentsOf(ensureCertificates(folder.path()).authority), after)
          << name << " " << damage;
    }
  }
}

TEST_F(CertificatesTest, SaysWhenTheFolderCannotBeWritten) {
  std::ofstream(folder.file("taken")) << "a file";
  EXPECT_THROW(static_cast<void>(ensureCertificates(folder.file("taken"))), std::exception);
}

}  // namespace
}  // namespace notewick::service
