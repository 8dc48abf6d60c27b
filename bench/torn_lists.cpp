// Kills programs that save lists, and counts the lists that are neither the old nor the new one.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <random>
#include <string>
#include <thread>

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

/// How many saves a saver has begun, as both processes see it.
using Saves = std::atomic<int>;

Saves& sharedCounter() {
  void* const memory =
      mmap(nullptr, sizeof(Saves), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  return *new (memory) Saves(0);
}

[[noreturn]] void saveUntilKilled(const std::string& path, const Texts& texts, Saves& begun) {
  PosixFiles files;
  for (const pid_t killer = getppid(); getppid() == killer;) {
    ++begun;
    files.replaceInPlace(path, begun % 2 == 1 ? texts.after : texts.before);
  }
  _exit(0);
}

/// An instant within a save: the write is near its beginning, the rest is waiting for the disk.
void waitForAnInstant(Saves& begun, std::minstd_rand& random) {
  using namespace std::chrono;
  const int chosen = std::uniform_int_distribution(1, 4)(random);
  while (begun < chosen) std::this_thread::yield();
  const double exponent = std::uniform_real_distribution(-6.0, -2.7)(random);
  const auto end = steady_clock::now() + duration<double>(std::pow(10.0, exponent));
  while (steady_clock::now() < end) continue;
}

bool isTorn(const std::string& path, const Texts& texts) {
  std::string left = PosixFiles().read(path).value_or("");
  left.erase(left.find_last_not_of(' ') + 1);
  return left != texts.before && left != texts.after;
}

/// Returns how many of these kills tore the list.
int storm(const std::string& path, const Texts& texts, int kills, std::minstd_rand& random) {
  static Saves& begun = sharedCounter();
  int torn = 0;
  PosixFiles().replaceInPlace(path, texts.before);
  for (int kill = 0; kill < kills; ++kill) {
    begun = 0;
    const pid_t saver = fork();
    if (saver == 0) saveUntilKilled(path, texts, begun);
    waitForAnInstant(begun, random);
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
