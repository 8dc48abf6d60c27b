#include <iostream>

#include "app/constants.h"
#include "doctor/linux/checks.h"
#include "platform/composition.h"
#include "platform/ports.h"

namespace {

using namespace std::chrono_literals;

constexpr auto PATIENCE = 12s;

}  // namespace

int main(int /*argc*/, char** argv) {
  using namespace notewick;
  const auto platform = makePlatform(argv);
  setConstants(ports().files.homeFolder());
  std::vector<Check> checks = desktopChecks(argv);
  for (const auto& more : {serviceChecks(), fileChecks()}) {
    checks.insert(checks.end(), more.begin(), more.end());
  }
  return runChecks(checks, PATIENCE, std::cout) ? EXIT_SUCCESS : EXIT_FAILURE;
}
