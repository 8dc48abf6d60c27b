// Kills programs that save lists, and counts the lists that are neither the old nor the new one.

#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "platform/posix/files.h"

namespace notewick {
namespace {

constexpr std::array<std::size_t, 3> SIZES = {24'000, 81'000, 163'000};

/// Lists of this size as they stand before and after one item is added.
struct Texts {
  explicit Texts(std::size_t size)
      : before("[" + std::string(size, 'a') + "]"),
        after("[" + std::string(size + 250, 'b') + "]") {}
  std::string before;
  std::string after;
};

[[noreturn]] void saveWithoutEnd(const std::string& path, const Texts& texts) {
  PosixFiles files;
  for (;;) {
    files.replaceInPlace(path, texts.after);
    files.replaceInPlace(path, texts.before);
  }
}

bool isTorn(const std::string& path, const Texts& texts) {
  std::string left = PosixFiles().read(path).value_or("");
  left.erase(left.find_last_not_of(' ') + 1);
  return left != texts.before && left != texts.after;
}

/// Returns how many of these kills tore the list.
int storm(const std::string& path, const Texts& texts, int kills, std::minstd_rand& random) {
  std::uniform_int_distribution<useconds_t> instant(500, 8'000);
  int torn = 0;
  PosixFiles().replaceInPlace(path, texts.before);
  for (int kill = 0; kill < kills; ++kill) {
    const pid_t saver = fork();
    if (saver == 0) saveWithoutEnd(path, texts);
    usleep(instant(random));
    ::kill(saver, SIGKILL);
    waitpid(saver, nullptr, 0);
    torn += isTorn(path, texts) ? 1 : 0;
  }
  return torn;
}

int measure(const std::string& folder, int kills) {
  std::minstd_rand random(std::random_device{}());
  int tornInAll = 0;
  std::puts("list       kills   torn");
  for (const std::size_t size : SIZES) {
    const std::string path = folder + "/list-" + std::to_string(size) + ".json";
    const int torn = storm(path, Texts(size), kills, random);
    std::printf("%4zu kB  %7d  %5d\n", size / 1000, kills, torn);
    std::fflush(stdout);
    std::filesystem::remove(path);
    tornInAll += torn;
  }
  return tornInAll == 0 ? 0 : 1;
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  CLI::App options("Kills programs that save lists, and counts the lists that it tears");
  int kills = 2000;
  std::string folder = std::filesystem::current_path();
  options.add_option("--kills", kills, "for each size of list")->capture_default_str();
  options.add_option("--folder", folder, "where the lists are saved")->capture_default_str();
  CLI11_PARSE(options, argc, argv);
  return notewick::measure(folder, kills);
}
