#include "tools/local-service/options.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

class OptionsTest : public testing::Test {
 protected:
  Options read(const std::vector<std::string>& arguments) {
    return readOptions(arguments,
                       [this](const char*) { return variable ? variable->c_str() : nullptr; });
  }

  std::string file(const std::string& name, const std::string& content) {
    std::ofstream(folder.file(name)) << content;
    return folder.file(name).string();
  }

  TemporaryFolder folder;
  std::optional<std::string> variable;
};

TEST_F(OptionsTest, NeedExactlyOneOfTlsAndPlain) {
  EXPECT_THROW(read({}), UsageError);
  EXPECT_THROW(read({"--plain", "--tls-dir", "x"}), UsageError);
  EXPECT_EQ(read({"--plain"}).settings.tlsFolder, std::nullopt);
  EXPECT_EQ(read({"--tls-dir", "x"}).settings.tlsFolder, "x");
  EXPECT_TRUE(read({"--help"}).help);
}

TEST_F(OptionsTest, HaveDefaultsThatTouchNothing) {
  const auto options = read({"--plain"});
  EXPECT_EQ(options.settings.host, "127.0.0.1");
  EXPECT_EQ(options.settings.port, 0);
  EXPECT_EQ(options.settings.database, ":memory:");
  EXPECT_EQ(options.settings.accessLifetime, std::chrono::seconds(3600));
  EXPECT_EQ(options.settings.controlPort, std::nullopt);
  EXPECT_EQ(options.portFile, std::nullopt);
  EXPECT_TRUE(options.accounts.empty());
}

TEST_F(OptionsTest, AreReadOneByOne) {
  const auto options =
      read({"--plain", "--host", "::1", "--port", "8443", "--port-file", "ports", "--database",
            "notes.db", "--access-lifetime", "90", "--control-port", "0"});
  EXPECT_EQ(options.settings.host, "::1");
  EXPECT_EQ(options.settings.port, 8443);
  EXPECT_EQ(options.portFile, "ports");
  EXPECT_EQ(options.settings.database, "notes.db");
  EXPECT_EQ(options.settings.accessLifetime, std::chrono::seconds(90));
  EXPECT_EQ(options.settings.controlPort, 0);
}

TEST_F(OptionsTest, RefuseWhatTheyDoNotKnow) {
  for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--password", "x"},
                                                {"x"},
                                                {"--port"},
                                                {"--port", "65536"},
                                                {"--port", "-1"},
                                                {"--port", "80x"},
                                                {"--port", ""},
                                                {"--access-lifetime", "0"},
                                                {"--host", "0.0.0.0"},
                                                {"--host", ""},
                                                {"--password-file", "x"},
                                                {"--participants", "x"}}) {
    auto arguments = wrong;
    arguments.insert(arguments.begin(), "--plain");
    EXPECT_THROW(read(arguments), UsageError) << wrong.front();
  }
}

TEST_F(OptionsTest, TakePasswordsFromTheVariableOrAFile) {
  variable = "from the variable";
  const auto options = read({"--plain", "--account", "a@example.org", "--account", "b@example.org",
                             "--password-file", file("password", "from the file\nnot this")});
  ASSERT_EQ(options.accounts.size(), 2U);
  EXPECT_EQ(options.accounts[0].password, "from the variable");
  EXPECT_EQ(options.accounts[1].password, "from the file");
}

TEST_F(OptionsTest, RefuseAPasswordFileWithoutAPassword) {
  EXPECT_THROW(read({"--plain", "--account", "a", "--password-file", file("empty", "\nx")}),
               UsageError);
  EXPECT_THROW(read({"--plain", "--account", "a", "--password-file", "/no/such"}), UsageError);
}

TEST_F(OptionsTest, GiveParticipantsToTheAccountBefore) {
  const auto list = file("list", R"([{"id": "1", "first_name": "A", "last_name": "B"}])");
  const auto options =
      read({"--plain", "--account", "a", "--participants", list, "--account", "b"});
  EXPECT_EQ(options.accounts[0].participants, (Participants{{"1", "A", "B"}}));
  EXPECT_EQ(options.accounts[1].participants, std::nullopt);
  EXPECT_THROW(read({"--plain", "--account", "a", "--participants", file("bad", "{")}), UsageError);
}

class ApplyAccountsTest : public testing::Test {
 protected:
  Participants participantsOf(const std::string& email) {
    return accounts.participants(accounts.find(email).value());
  }

  Database database{":memory:"};
  Accounts accounts{database};
};

TEST_F(ApplyAccountsTest, ANewAccountGetsTheDemonstrationList) {
  applyAccounts({{.email = "a", .password = "x"}}, accounts);
  EXPECT_TRUE(accounts.signIn("a", "x"));
  EXPECT_EQ(participantsOf("a"), demonstrationParticipants());
}

TEST_F(ApplyAccountsTest, AnExistingAccountKeepsWhatIsNotGiven) {
  applyAccounts({{.email = "a", .password = "x", .participants = Participants{}}}, accounts);
  applyAccounts({{.email = "a"}}, accounts);
  EXPECT_TRUE(accounts.signIn("a", "x"));
  EXPECT_TRUE(participantsOf("a").empty());
  applyAccounts({{.email = "a", .password = "y"}}, accounts);
  EXPECT_TRUE(accounts.signIn("a", "y"));
  EXPECT_TRUE(participantsOf("a").empty());
}

TEST_F(ApplyAccountsTest, ANewAccountNeedsAPassword) {
  EXPECT_THROW(applyAccounts({{.email = "a"}}, accounts), UsageError);
  EXPECT_EQ(accounts.find("a"), std::nullopt);
}

}  // namespace
}  // namespace notewick::service
