#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/local-service/options.h"
#include "tools/local-service/service.h"

namespace {

using namespace notewick::service;

/// Held back from every thread, so that only the wait below takes them.
sigset_t holdBackEndingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

/// In one piece: who sees the file sees both lines.
void writePorts(const LocalService& service, const std::filesystem::path& file) {
  const auto unfinished = std::filesystem::path(file).concat(".new");
  std::ofstream stream(unfinished);
  stream << service.port() << '\n';
  if (const auto control = service.controlPort()) stream << *control << '\n';
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + " cannot be written");
  std::filesystem::rename(unfinished, file);
}

void announce(const LocalService& service) {
  std::cout << "listening on " << service.origin() << '\n';
  if (const auto control = service.controlPort()) {
    std::cout << "control on http://localhost:" << *control << '\n';
  }
  std::cout.flush();
}

int serve(const Options& options) {
  const auto signals = holdBackEndingSignals();
  umask(S_IRWXG | S_IRWXO);
  LocalService service(options.settings);
  applyAccounts(options.accounts, service.accounts());
  if (options.portFile) writePorts(service, *options.portFile);
  announce(service);
  int received = 0;
  sigwait(&signals, &received);
  return 0;
}

}  // namespace

int main(int count, char** arguments) try {
  const auto options = readOptions({arguments + 1, arguments + count}, std::getenv);
  if (options.help) {
    std::cout << USAGE;
    return 0;
  }
  return serve(options);
} catch (const UsageError& wrong) {
  std::cerr << "local-service: " << wrong.what() << "\n\n" << USAGE;
  return 2;
} catch (const std::exception& failure) {
  std::cerr << "local-service: " << failure.what() << '\n';
  return 1;
}
