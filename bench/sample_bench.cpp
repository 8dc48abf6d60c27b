// What one sample costs: real window titles read through the session's own screen, matched against
// 200 participants, logged to a real file, swept. Prints the milliseconds of processor time, and
// how many questions to the X server cost as much; fails when no window names a participant.
//   sample_bench

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "model/local_store.h"
#include "platform/linux/screen.h"
#include "platform/posix/files.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

constexpr int PARTICIPANTS = 200;
constexpr int ROUNDS = 31;
constexpr int TIMES_A_ROUND = 50;

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

/// The milliseconds of processor time that this takes, on average over a round.
template <class Work>
double cost(const Work& work) {
  const std::clock_t before = std::clock();
  for (int i = 0; i < TIMES_A_ROUND; ++i) work();
  return 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / TIMES_A_ROUND;
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

/// Has nothing to do with the program: a question to the X server and its answer.
void ask(xcb_connection_t* server) {
  std::free(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
}

void printCosts(AppDelegate& delegate) {
  xcb_connection_t* const server = xcb_connect(nullptr, nullptr);
  std::vector<double> milliseconds, multiples;
  for (int round = 0; round < ROUNDS; ++round) {
    const double reference = cost([&] { ask(server); });
    milliseconds.push_back(cost([&] { delegate.tick(); }));
    multiples.push_back(milliseconds.back() / reference);
  }
  xcb_disconnect(server);
  std::printf("%.4f %.3f\n", median(milliseconds), median(multiples));
}

}  // namespace
}  // namespace notewick

int main() {
  const std::string home = std::filesystem::temp_directory_path() / "notewick-sample-bench";
  std::filesystem::remove_all(home);
  setenv("HOME", home.c_str(), 1);
  notewick::RealSampleWorld world;
  world.launch();
  notewick::printCosts(world.app());
  const bool seen = world.app().sessions.contains("Tobias Hargreave");
  std::filesystem::remove_all(home);
  return seen ? 0 : 1;
}
