// What one sample costs: real window titles read through the session's own screen, matched against
// 200 participants, logged to a real file, swept.
//   sample_bench ROUNDS
// Prints four figures a round, in milliseconds: the processor time of a sample, that of one
// question to the X server, the time that a sample takes, and what its round trips to the X server
// take alone.

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <span>
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

struct Cost {
  double processor;  ///< milliseconds
  double elapsed;    ///< milliseconds
};

/// What this costs on average over a round.
template <class Work>
Cost cost(const Work& work) {
  const auto started = std::chrono::steady_clock::now();
  const std::clock_t before = std::clock();
  for (int i = 0; i < TIMES_A_ROUND; ++i) work();
  const auto used = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - started;
  return {1000 * used / TIMES_A_ROUND, 1000 * taken.count() / TIMES_A_ROUND};
}

/// Questions to the X server, as plain as they can be asked.
class Server {
 public:
  Server() : connection_(xcb_connect(nullptr, nullptr)) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    windows_ = numbersIn(root_, atom("_NET_CLIENT_LIST"));
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() { xcb_disconnect(connection_); }

  void ask() const {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }

  /// What a sample asks, in its three round trips: the desktop, who the windows belong to, titles.
  void askLikeASample() const {
    askAll(std::array{root_}, desktop_);
    askAll(windows_, identity_);
    askAll(windows_, title_);
  }

 private:
  using Atoms = std::vector<xcb_atom_t>;

  [[nodiscard]] xcb_atom_t atom(const std::string& name) const {
    const auto asked =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    auto* const reply = xcb_intern_atom_reply(connection_, asked, nullptr);
    const xcb_atom_t found = reply->atom;
    std::free(reply);
    return found;
  }

  [[nodiscard]] Atoms atoms(const std::vector<std::string>& names) const {
    Atoms found;
    for (const std::string& name : names) found.push_back(atom(name));
    return found;
  }

  [[nodiscard]] xcb_get_property_cookie_t get(xcb_window_t window, xcb_atom_t property) const {
    constexpr std::uint32_t MOST_WORDS = 16384;
    return xcb_get_property(connection_, 0, window, property, XCB_ATOM_ANY, 0, MOST_WORDS);
  }

  [[nodiscard]] std::vector<xcb_window_t> numbersIn(xcb_window_t window,
                                                    xcb_atom_t property) const {
    auto* const reply = xcb_get_property_reply(connection_, get(window, property), nullptr);
    const auto* const values = static_cast<xcb_window_t*>(xcb_get_property_value(reply));
    const std::vector<xcb_window_t> numbers(values,
                                            values + xcb_get_property_value_length(reply) / 4);
    std::free(reply);
    return numbers;
  }

  void askAll(std::span<const xcb_window_t> windows, const Atoms& properties) const {
    std::vector<xcb_get_property_cookie_t> asked;
    for (const auto window : windows) {
      for (const auto property : properties) asked.push_back(get(window, property));
    }
    for (const auto& one : asked) std::free(xcb_get_property_reply(connection_, one, nullptr));
  }

  xcb_connection_t* connection_;
  xcb_window_t root_;
  std::vector<xcb_window_t> windows_;
  Atoms desktop_ = atoms({"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST",
                          "_NET_SUPPORTING_WM_CHECK"});
  Atoms identity_ = atoms({"_NET_WM_PID", "WM_CLIENT_MACHINE", "WM_CLASS", "WM_CLIENT_LEADER"});
  Atoms title_ = atoms({"_NET_WM_NAME", "WM_NAME"});
};

void printCosts(AppDelegate& delegate, int rounds) {
  const Server server;
  for (; rounds > 0; --rounds) {
    const double question = cost([&] { server.ask(); }).processor;
    const Cost sample = cost([&] { delegate.tick(); });
    const double roundTrips = cost([&] { server.askLikeASample(); }).elapsed;
    std::printf("%.4f %.4f %.4f %.4f\n", sample.processor, question, sample.elapsed, roundTrips);
  }
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  const std::string home = std::filesystem::temp_directory_path() / "notewick-sample-bench";
  std::filesystem::remove_all(home);
  setenv("HOME", home.c_str(), 1);
  notewick::RealSampleWorld world;
  world.launch();
  notewick::printCosts(world.app(), std::stoi(argv[1]));
  const bool seen = world.app().sessions.contains("Tobias Hargreave");
  std::filesystem::remove_all(home);
  return seen ? EXIT_SUCCESS : EXIT_FAILURE;
}
