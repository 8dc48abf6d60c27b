// Prints what the product reads from the screen. The line "sample" on standard input asks for one
// sample, "ask" asks the user for leave to read. After either comes one line of JSON on standard
// output; only then write the next.
//
//   print-titles [--body x11|toplevels|atspi|atspi+x11] [--measure COUNT] [--window TITLE...]
//
// --body takes that body, not the one that fits the session; --measure takes so many samples and
// prints what one costs; --window, the last option, shows windows of its own.

#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/linux/screen.h"
#include "platform/linux/titles/own_application.h"

namespace notewick {
namespace {

using Json = nlohmann::ordered_json;
using Milliseconds = std::chrono::duration<double, std::milli>;

Json readSample(Screen& screen) {
  const auto application = screen.frontmostApplication();
  if (!application) return nullptr;
  Json sample{{"app", nullptr}, {"focused", nullptr}, {"windows", Json::array()}};
  if (const auto name = application->localizedName()) sample["app"] = *name;
  if (const auto window = application->focusedWindow()) {
    if (const auto title = window->title()) sample["focused"] = *title;
  }
  for (const auto& window : application->windows()) {
    const auto title = window->title();
    sample["windows"].push_back(title ? Json(*title) : Json());
  }
  return sample;
}

Json answer(const ScreenBody& body) {
  const auto start = std::chrono::steady_clock::now();
  const auto sample = readSample(*body.screen);
  const Milliseconds taken = std::chrono::steady_clock::now() - start;
  return {{"trusted", body.accessibility->isTrusted()},
          {"frontmost", sample},
          {"milliseconds", taken.count()}};
}

double processorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

Json measure(Screen& screen, int count) {
  const auto processorStart = processorMilliseconds();
  double total = 0;
  double longest = 0;
  for (int i = 0; i < count; ++i) {
    const auto start = std::chrono::steady_clock::now();
    readSample(screen);
    const Milliseconds taken = std::chrono::steady_clock::now() - start;
    total += taken.count();
    longest = std::max(longest, taken.count());
  }
  const auto processor = processorMilliseconds() - processorStart;
  return {{"samples", count},
          {"meanProcessorMilliseconds", processor / count},
          {"meanMilliseconds", total / count},
          {"longestMilliseconds", longest}};
}

ScreenBody bodyNamed(const std::string& name) {
  if (name.empty()) return chooseScreenBody();
  auto body = name == "x11"         ? makeX11Body()
              : name == "toplevels" ? makeToplevelBody()
                                    : std::nullopt;
  if (name == "atspi") body = makeAtspiBody();
  if (name == "atspi+x11") body = makeAtspiAndX11Body();
  if (body) return std::move(*body);
  std::cerr << "print-titles: no body \"" << name << "\" in this session\n";
  std::exit(EXIT_FAILURE);
}

std::string valueOf(const std::vector<std::string>& arguments, const std::string& option) {
  const auto at = std::find(arguments.begin(), arguments.end(), option);
  return at == arguments.end() || at + 1 == arguments.end() ? std::string() : *(at + 1);
}

std::vector<std::unique_ptr<QWidget>> showWindows(const std::vector<std::string>& arguments) {
  std::vector<std::unique_ptr<QWidget>> windows;
  auto title = std::find(arguments.begin(), arguments.end(), "--window");
  while (title != arguments.end() && ++title != arguments.end()) {
    windows.push_back(std::make_unique<QWidget>());
    windows.back()->setWindowTitle(QString::fromStdString(*title));
    windows.back()->show();
    windows.back()->activateWindow();
  }
  return windows;
}

void run(const std::vector<std::string>& arguments) {
  const auto windows = showWindows(arguments);
  const auto body = bodyNamed(valueOf(arguments, "--body"));
  if (const auto count = valueOf(arguments, "--measure"); !count.empty()) {
    std::cout << measure(*body.screen, std::stoi(count)) << std::endl;
    return;
  }
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [&body] {
    std::string line;
    if (!std::getline(std::cin, line)) return QApplication::quit();
    if (line == "ask") body.accessibility->isTrustedWithPrompt();
    std::cout << answer(body) << std::endl;
  });
  QApplication::exec();
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName(notewick::OWN_WINDOW_CLASS);
  QApplication::setDesktopFileName(notewick::OWN_DESKTOP_ENTRY);
  notewick::run({argv + 1, argv + argc});
}
