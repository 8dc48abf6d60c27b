#include "platform/linux/main_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/linux_session.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

class QtMainLoopTest : public testing::Test {
 protected:
  /// Returns when a timer has fired that comes after all others of a test.
  void waitForALaterTimer() {
    bool fired = false;
    const auto later = loop_.startOneShot(0.1, [&] { fired = true; });
    EXPECT_TRUE(waitUntil([&] { return fired; }));
  }

  QtMainLoop loop_;
  std::vector<std::string> log_;
  int count_ = 0;
};

TEST_F(QtMainLoopTest, PostedActionsRunInOrderAfterWhatHasPostedThem) {
  loop_.post([this] {
    loop_.post([this] { log_.emplace_back("inner"); });
    log_.emplace_back("first");
  });
  loop_.post([this] { log_.emplace_back("second"); });
  EXPECT_THAT(log_, ElementsAre());
  EXPECT_TRUE(waitUntil([this] { return log_.size() == 3; }));
  EXPECT_THAT(log_, ElementsAre("first", "second", "inner"));
}

TEST_F(QtMainLoopTest, PostsFromManyThreadsAllRunOnTheMainThread) {
  const QThread* const mainThread = QThread::currentThread();
  bool onMainThread = true;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&] {
      for (int post = 0; post < 250; ++post) {
        loop_.post([&] {
          onMainThread = onMainThread && QThread::currentThread() == mainThread;
          ++count_;
        });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(waitUntil([this] { return count_ == 2000; }));
  EXPECT_TRUE(onMainThread);
}

TEST_F(QtMainLoopTest, AOneShotTimerFiresOnceAndNotEarly) {
  QElapsedTimer time;
  time.start();
  const auto timer = loop_.startOneShot(0.05, [this] { ++count_; });
  EXPECT_TRUE(waitUntil([this] { return count_ == 1; }));
  EXPECT_GE(time.elapsed(), 50);
  waitForALaterTimer();
  EXPECT_EQ(count_, 1);
}

// Qt's own repeating timers begin a new phase after each stall, and come 4.8 seconds later in the
// end.
TEST_F(QtMainLoopTest, ARepeatingTimerFiresAfterOneIntervalAndKeepsItsPhaseInALoopThatStalls) {
  QElapsedTimer time;
  time.start();
  const auto timer = loop_.startRepeating(0.02, [&] {
    EXPECT_GE(time.elapsed(), ++count_ * 20);
    if (count_ % 30 == 1) std::this_thread::sleep_for(500ms);
  });
  EXPECT_TRUE(waitUntil([this] { return count_ >= 300; }));
  EXPECT_GE(time.elapsed(), 300 * 20);
  EXPECT_LT(time.elapsed(), 300 * 20 + 4000);
}

TEST_F(QtMainLoopTest, FiringsThatWereMissedInALongStallAreLeftOut) {
  QElapsedTimer time;
  time.start();
  const auto timer = loop_.startRepeating(0.5, [this] { ++count_; });
  std::this_thread::sleep_for(2600ms);
  EXPECT_TRUE(waitUntil([this] { return count_ >= 2; }));
  EXPECT_GE(time.elapsed(), 3000);
}

TEST_F(QtMainLoopTest, ADestroyedTimerNeverFires) {
  auto oneShot = loop_.startOneShot(0.01, [this] { ++count_; });
  auto repeating = loop_.startRepeating(0.01, [this] { ++count_; });
  std::this_thread::sleep_for(20ms);
  oneShot.reset();
  repeating.reset();
  waitForALaterTimer();
  EXPECT_EQ(count_, 0);
}

TEST_F(QtMainLoopTest, ATimerMayBeDestroyedAndReplacedByItsOwnAction) {
  std::unique_ptr<Timer> timer;
  const std::string captured = "still alive after the timer is gone";
  timer = loop_.startRepeating(0.01, [this, &timer, captured] {
    timer = loop_.startOneShot(0.01, [this] { log_.emplace_back("the next one"); });
    log_.push_back(captured);
  });
  EXPECT_TRUE(waitUntil([this] { return log_.size() == 2; }));
  waitForALaterTimer();
  EXPECT_THAT(log_, ElementsAre(captured, "the next one"));
}

TEST_F(QtMainLoopTest, ATimerWithoutAnIntervalFiresInALaterTurn) {
  const auto timer = loop_.startOneShot(0, [this] { ++count_; });
  EXPECT_EQ(count_, 0);
  EXPECT_TRUE(waitUntil([this] { return count_ == 1; }));
}

}  // namespace
}  // namespace notewick
