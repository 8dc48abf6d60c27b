// What one sample costs: real window titles read through the session's own screen, matched against
// 200 participants, logged to a real file, swept. Prints one line; fails beyond the limit.
//   sample_bench [samples]

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "model/local_store.h"
#include "platform/linux/screen.h"
#include "platform/posix/files.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

constexpr double LIMIT_MILLISECONDS = 1.0;
constexpr int PARTICIPANTS = 200;

/// The world of the tests, but for the screen and the files, which are the real ones.
class RealSampleWorld : public World {
 public:
  RealSampleWorld() {
    registerPorts({clock, loop, realFiles, defaults, secrets, notifier, workspace, realScreen,
                   realScreen, uuids, views, [this](const HttpSessionConfiguration& settings) {
                     return service.makeSession(settings);
                   }});
    signIn();
    std::vector<std::string> names;
    for (int i = 0; i < PARTICIPANTS; ++i) names.push_back("Person" + std::to_string(i) + " Name");
    names.back() = "Tobias Hargreave";
    knows(names);
  }

  PosixFiles realFiles;
  DesktopScreen realScreen;
};

double processorMilliseconds() {
  return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double millisecondsPerSample(AppDelegate& delegate, int samples) {
  delegate.tick();
  const double before = processorMilliseconds();
  for (int i = 0; i < samples; ++i) delegate.tick();
  return (processorMilliseconds() - before) / samples;
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  const int samples = argc > 1 ? std::atoi(argv[1]) : 1000;
  const std::string home = std::filesystem::temp_directory_path() / "notewick-sample-bench";
  std::filesystem::remove_all(home);
  setenv("HOME", home.c_str(), 1);
  notewick::RealSampleWorld world;
  world.launch();
  const double cost = notewick::millisecondsPerSample(world.app(), samples);
  const bool seen = world.app().sessions.contains("Tobias Hargreave");
  std::filesystem::remove_all(home);
  std::printf("a sample with %d participants costs %.3f ms of processor time (limit %.0f)%s\n",
              notewick::PARTICIPANTS, cost, notewick::LIMIT_MILLISECONDS,
              seen ? "" : "; no window named a participant");
  return seen && cost <= notewick::LIMIT_MILLISECONDS ? 0 : 1;
}
