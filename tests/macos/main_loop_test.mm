#include "platform/macos/main_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "tests/macos/eventually.h"

namespace notewick {
namespace {

class MacosMainLoopTest : public testing::Test {
 protected:
  CocoaMainLoop loop_;
  std::string log_;
};

TEST_F(MacosMainLoopTest, RunsWhatIsPostedLaterAndInOrderOnTheMainThread) {
  std::thread::id ranOn;
  loop_.post([this] { log_ += "a"; });
  loop_.post([this] { log_ += "b"; });
  std::thread([&] { loop_.post([&] { ranOn = std::this_thread::get_id(); }); }).join();
  EXPECT_EQ(log_, "");
  EXPECT_TRUE(eventually([&] { return ranOn == std::this_thread::get_id(); }));
  EXPECT_EQ(log_, "ab");
}

TEST_F(MacosMainLoopTest, FiresAOneShotTimerOnceARepeatingOneAgainAndACancelledOneNever) {
  const auto once = loop_.startOneShot(0.01, [this] { log_ += "1"; });
  auto cancelled = loop_.startOneShot(0.02, [this] { log_ += "x"; });
  cancelled.reset();
  const auto again = loop_.startRepeating(0.05, [this] { log_ += "r"; });
  EXPECT_TRUE(eventually([this] { return log_.ends_with("rrr"); }));
  EXPECT_EQ(log_, "1rrr");
}

TEST_F(MacosMainLoopTest, LetsAnActionDestroyItsOwnTimer) {
  std::unique_ptr<Timer> timer;
  timer = loop_.startRepeating(0.01, [this, &timer, text = std::string("kept to the end")] {
    timer.reset();
    log_ = text;
  });
  EXPECT_TRUE(eventually([this] { return log_ == "kept to the end"; }));
}

}  // namespace
}  // namespace notewick
