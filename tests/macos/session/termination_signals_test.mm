#include "platform/macos/session/termination_signals.h"

#include <gtest/gtest.h>

#include <csignal>

#include "tests/macos/eventually.h"

namespace notewick {
namespace {

TEST(MacosTerminationSignalsTest, EachIsReportedInALaterTurn) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    (void)std::signal(signal, SIG_DFL);
    int asked = 0;
    const TerminationSignals signals([&asked] { ++asked; });
    (void)std::raise(signal);
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(eventually([&asked] { return asked == 1; }));
  }
}

TEST(MacosTerminationSignalsTest, OneThatWasIgnoredStaysIgnored) {
  const auto before = std::signal(SIGHUP, SIG_IGN);
  const TerminationSignals signals([] { ADD_FAILURE() << "it was to be ignored"; });
  (void)std::raise(SIGHUP);
  runLoopOnce();
  EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

}  // namespace
}  // namespace notewick
