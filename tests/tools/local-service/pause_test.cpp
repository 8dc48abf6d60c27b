#include "tools/local-service/pause.h"

#include <gtest/gtest.h>

#include <thread>

namespace notewick::service {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

TEST(PauseTest, LastsAsLongAsAsked) {
  const Pause pause;
  const auto start = steady_clock::now();
  pause.wait(30ms);
  EXPECT_GE(steady_clock::now() - start, 30ms);
}

TEST(PauseTest, IsEndedFromAnotherThread) {
  const Pause pause;
  const auto start = steady_clock::now();
  std::thread waiting([&] { pause.wait(1h); });
  pause.end();
  waiting.join();
  EXPECT_LT(steady_clock::now() - start, 10s);
}

TEST(PauseTest, OnceEndedNoneBeginsAgain) {
  const Pause pause;
  pause.end();
  const auto start = steady_clock::now();
  pause.wait(1h);
  pause.wait(std::chrono::milliseconds::max());
  EXPECT_LT(steady_clock::now() - start, 10s);
}

}  // namespace
}  // namespace notewick::service
