// Prints what the product reads from the screen. The line "sample" on standard input asks for one
// sample, "ask" asks the user for leave to read. After either comes one line of JSON on standard
// output; only then write the next.
//
//   print-titles [--reader atspi|atspi+x11] [--window TITLE...]
//
// --reader takes that reader, not the one that fits the session; --window, the last option, shows
// windows of its own.

#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/linux/screen.h"
#include "platform/linux/titles/application_names.h"

namespace notewick {
namespace {

using Json = nlohmann::ordered_json;
using Milliseconds = std::chrono::duration<double, std::milli>;

Json textOrNull(const std::optional<std::string>& text) {
  return text ? Json(*text) : Json();
}

Json readSample(Screen& screen) {
  const auto application = screen.frontmostApplication(8);
  if (!application) return nullptr;
  Json sample{{"app", textOrNull(application->name)},
              {"focused", textOrNull(application->focusedTitle)},
              {"windows", Json::array()}};
  for (const auto& title : application->titles) sample["windows"].push_back(textOrNull(title));
  return sample;
}

Json answer(const TitleReader& reader) {
  const auto start = std::chrono::steady_clock::now();
  const auto sample = readSample(*reader.screen);
  const Milliseconds taken = std::chrono::steady_clock::now() - start;
  return {{"trusted", reader.accessibility->isTrusted()},
          {"frontmost", sample},
          {"milliseconds", taken.count()}};
}

TitleReader readerNamed(const std::string& name) {
  if (name == "atspi") return makeAtspiReader();
  if (name == "atspi+x11") return makeAtspiAndX11Reader();
  if (name.empty()) return chooseTitleReader();
  throw std::invalid_argument("there is no reader \"" + name + '"');
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
  const auto reader = readerNamed(valueOf(arguments, "--reader"));
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [&reader] {
    std::string line;
    if (!std::getline(std::cin, line)) return QApplication::quit();
    if (line == "ask") reader.accessibility->isTrustedWithPrompt();
    std::cout << answer(reader).dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
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
