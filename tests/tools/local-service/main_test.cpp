#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <regex>

#include "tests/tools/local-service/test_world.h"

extern char** environ;  // declared by no header on some systems

namespace notewick::service {
namespace {

/// The program in a process of its own, with its standard output and error in one pipe.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    output_ = ends[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    arguments.insert(arguments.begin(), LOCAL_SERVICE_PROGRAM);
    std::vector<char*> pointers;
    for (auto& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    EXPECT_EQ(
        posix_spawn(&process_, LOCAL_SERVICE_PROGRAM, &actions, nullptr, pointers.data(), environ),
        0);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
  }

  ~Program() {
    if (process_ > 0) end(SIGKILL);
    close(output_);
  }

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// What it has printed once that contains the text, or all at its end or after ten seconds.
  std::string printed(const std::string& awaited = "\x01") {
    pollfd readable{.fd = output_, .events = POLLIN, .revents = 0};
    char buffer[4096];
    while (printed_.find(awaited) == std::string::npos && poll(&readable, 1, 10'000) == 1) {
      const auto size = read(output_, buffer, sizeof buffer);
      if (size <= 0) break;
      printed_.append(buffer, static_cast<std::size_t>(size));
    }
    return printed_;
  }

  /// Sends the signal and gives the exit status, or minus the signal that ended the process.
  int end(int signal) {
    kill(process_, signal);
    return wait();
  }

  int wait() {
    int status = 0;
    waitpid(std::exchange(process_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  pid_t process_ = -1;
  int output_ = -1;
  std::string printed_;
};

class ProgramTest : public testing::Test {
 protected:
  std::string file(const std::string& name, const std::string& content) {
    std::ofstream(folder.file(name)) << content;
    return folder.file(name).string();
  }

  TemporaryFolder folder;
};

TEST_F(ProgramTest, SaysWhereItListensAndServesTheAccountThere) {
  Program program({"--tls-dir", folder.file("tls").string(), "--account", "dana@example.org",
                   "--password-file", file("password", "right horse\n")});
  std::smatch line;
  const auto printed = program.printed("\n");
  ASSERT_TRUE(
      std::regex_match(printed, line, std::regex("listening on (https://localhost:[0-9]+)\n")))
      << printed;
  httplib::Client client(line[1].str());
  client.set_ca_cert_path(folder.file("tls/ca.pem").string());
  const auto answer = client.Post("/api/desktop/auth/login",
                                  R"({"email": "dana@example.org", "password": "right horse"})",
                                  "application/json");
  EXPECT_EQ(statusOf(answer), 200);
  EXPECT_EQ(program.end(SIGTERM), 0);
}

TEST_F(ProgramTest, EndsCleanlyOnAnInterruption) {
  Program program({"--plain"});
  ASSERT_NE(program.printed("\n").find("listening on http://"), std::string::npos);
  EXPECT_EQ(program.end(SIGINT), 0);
}

TEST_F(ProgramTest, WritesItsPortsToAFile) {
  Program program({"--plain", "--control-port", "0", "--port-file", folder.file("ports").string()});
  const auto printed = program.printed("control on");
  int port = 0, control = 0;
  std::ifstream(folder.file("ports")) >> port >> control;
  EXPECT_NE(printed.find("listening on http://localhost:" + std::to_string(port) + "\n"),
            std::string::npos);
  httplib::Client client("http://127.0.0.1:" + std::to_string(control));
  EXPECT_EQ(jsonOf(client.Get("/requests")), nlohmann::json::array());
  EXPECT_EQ(program.end(SIGTERM), 0);
}

TEST_F(ProgramTest, KeepsItsFilesToItsOwner) {
  Program program(
      {"--tls-dir", folder.file("tls").string(), "--database", folder.file("notes.db").string()});
  ASSERT_NE(program.printed("\n").find("listening"), std::string::npos);
  using std::filesystem::perms;
  for (const auto* const name : {"notes.db", "notes.db-wal", "tls", "tls/server.key"}) {
    const auto rights = std::filesystem::status(folder.file(name)).permissions();
    EXPECT_EQ(rights & (perms::group_all | perms::others_all), perms::none) << name;
  }
  EXPECT_EQ(program.end(SIGTERM), 0);
}

TEST_F(ProgramTest, KeepsItsNotesWhenKilled) {
  const std::vector<std::string> arguments = {"--plain",
                                              "--database",
                                              folder.file("notes.db").string(),
                                              "--control-port",
                                              "0",
                                              "--account",
                                              "dana@example.org",
                                              "--password-file",
                                              file("password", "right horse"),
                                              "--port-file",
                                              folder.file("ports").string()};
  const auto client = [&](int line) {
    int ports[2];
    std::ifstream(folder.file("ports")) >> ports[0] >> ports[1];
    return httplib::Client("http://127.0.0.1:" + std::to_string(ports[line]));
  };
  {
    Program program(arguments);
    ASSERT_NE(program.printed("control on").find("control on"), std::string::npos);
    const auto session = jsonOf(client(0).Post(
        "/api/desktop/auth/login", R"({"email": "dana@example.org", "password": "right horse"})",
        "application/json"));
    const auto answer = client(0).Post(
        "/api/desktop/case-notes/capture",
        {{"Authorization", "Bearer " + session.at("accessToken").get<std::string>()}},
        R"({"participantId": "p-101", "input": "x", "durationMinutes": 15,
            "sessionDate": "2026-03-05"})",
        "application/json");
    ASSERT_EQ(statusOf(answer), 200);
    EXPECT_EQ(program.end(SIGKILL), -SIGKILL);
  }
  Program program(arguments);
  ASSERT_NE(program.printed("control on").find("control on"), std::string::npos);
  EXPECT_EQ(jsonOf(client(1).Get("/notes")).size(), 1U);
}

TEST_F(ProgramTest, ExplainsACommandLineItCannotFollow) {
  Program nothing({});
  EXPECT_NE(nothing.printed().find("either --tls-dir or --plain"), std::string::npos);
  EXPECT_EQ(nothing.wait(), 2);
  Program outside({"--plain", "--host", "0.0.0.0"});
  EXPECT_NE(outside.printed().find("not a loopback address"), std::string::npos);
  EXPECT_EQ(outside.wait(), 2);
  Program help({"--help"});
  EXPECT_TRUE(help.printed().starts_with("usage: local-service"));
  EXPECT_EQ(help.wait(), 0);
}

TEST_F(ProgramTest, SaysWhyItCannotStart) {
  Program program({"--plain", "--database", folder.file("no/such/folder").string()});
  EXPECT_NE(program.printed().find("local-service: database: "), std::string::npos);
  EXPECT_EQ(program.wait(), 1);
}

}  // namespace
}  // namespace notewick::service
