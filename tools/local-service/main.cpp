#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "assets.h"
#include "tools/local-service/service.h"

namespace {

using namespace notewick::service;

struct Options {
  ServiceSettings settings;
  std::string account;           // empty: none is made or changed
  std::string participantsFile;  // empty: none are given
  std::string portFile;
};

void addOptions(CLI::App& parser, Options& options) {
  auto& settings = options.settings;
  const CLI::Range ports(0, 65535);
  auto* const transport = parser.add_option_group("transport")->require_option(1);
  transport->add_option("--tls-dir", settings.tlsFolder,
                        "Serve HTTPS; make ca.pem, server.pem and server.key there if needed");
  transport->add_flag("--plain")->description("Serve HTTP");
  parser.add_option("--port", settings.port, "The port; 0 takes a free one")->check(ports);
  parser.add_option("--control-port", settings.controlPort, "Open the control channel for tests")
      ->check(ports);
  parser.add_option("--port-file", options.portFile,
                    "Write the port there once listening, and the control port below it");
  parser.add_option("--database", settings.database,
                    "Keep everything in this file; without it, in memory");
  auto* const account = parser.add_option(
      "--account", options.account,
      "Make this account, or give it a new password: the value of LOCAL_SERVICE_PASSWORD");
  parser
      .add_option("--participants", options.participantsFile,
                  R"(The account's participants: [{"id", "first_name", "last_name"}, ...])")
      ->check(CLI::ExistingFile)
      ->needs(account);
}

/// An account without participants gets those of the demonstration.
void applyAccount(const Options& options, Records& records) {
  if (options.account.empty()) return;
  const auto* const password = std::getenv("LOCAL_SERVICE_PASSWORD");
  if (!password) throw CLI::RequiredError("LOCAL_SERVICE_PASSWORD");
  const auto account = records.saveAccount(options.account, password);
  if (!options.participantsFile.empty()) {
    std::ifstream stream(options.participantsFile);
    records.saveParticipants(account, nlohmann::json::parse(stream));
  } else if (records.participants(account).empty()) {
    records.saveParticipants(account, nlohmann::json::parse(assets::PARTICIPANTS));
  }
}

/// Held back from every thread, so that only the wait below takes them.
sigset_t holdBackEndingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

/// In one piece: who sees the file sees all of it.
void write(const std::string& file, const std::string& text) {
  const auto unfinished = file + ".new";
  std::ofstream stream(unfinished);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file + " cannot be written");
  std::filesystem::rename(unfinished, file);
}

void announce(const LocalService& service, const std::string& portFile) {
  auto ports = std::to_string(service.port()) + "\n",
       lines = "listening on " + service.origin() + "\n";
  if (const auto control = service.controlPort()) {
    ports += std::to_string(*control) + "\n";
    lines += "control on http://localhost:" + std::to_string(*control) + "\n";
  }
  if (!portFile.empty()) write(portFile, ports);
  std::cout << lines << std::flush;
}

/// Browsers keep connections in reserve on which they may not speak for long.
void giveUpAfterASecond() {
  std::signal(SIGALRM, [](int) { std::_Exit(0); });
  alarm(1);
}

void serve(const Options& options) {
  const auto signals = holdBackEndingSignals();
  umask(S_IRWXG | S_IRWXO);  // keys, tokens and notes are the user's own
  LocalService service(options.settings);
  applyAccount(options, service.records());
  announce(service, options.portFile);
  int received = 0;
  sigwait(&signals, &received);
  giveUpAfterASecond();
}

}  // namespace

int main(int count, char** arguments) {
  CLI::App parser("A small VELK service for development, demonstration and tests", "local-service");
  Options options;
  addOptions(parser, options);
  try {
    parser.parse(count, arguments);
    serve(options);
    return 0;
  } catch (const CLI::ParseError& end) {
    return parser.exit(end) == 0 ? 0 : 2;
  } catch (const std::exception& failure) {
    std::cerr << "local-service: " << failure.what() << '\n';
    return 1;
  }
}
