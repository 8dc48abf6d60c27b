#include "platform/linux/application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <list>

#include "platform/linux/session/termination_signals.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

const std::string NO_BUS = "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent";

class QtApplicationTest : public testing::Test {
 protected:
  using Environment = std::vector<std::string>;

  /// Starts the program with these changes to the environment.
  ChildProcess& start(const Environment& changes = {}) {
    std::vector<std::string> command{"env"};
    command.insert(command.end(), changes.begin(), changes.end());
    command.push_back(program_);
    command.insert(command.end(), arguments_.begin(), arguments_.end());
    return started_.emplace_back(command);
  }

  ChildProcess& startAndLaunch(const Environment& changes = {}) {
    ChildProcess& program = start(changes);
    EXPECT_THAT(program.readLine(), StartsWith("launched"));
    return program;
  }

  std::string program_ = APPLICATION_PROBE;
  std::vector<std::string> arguments_;
  std::list<ChildProcess> started_;
};

TEST_F(QtApplicationTest, RunsUntilASignalEndsItInOrderAlsoAfterItsLastWindowClosed) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    ChildProcess& program = startAndLaunch();
    program.signal(signal);
    EXPECT_EQ(program.readLine(), "will terminate");
    EXPECT_EQ(program.readLine(), "ended");
    EXPECT_EQ(program.wait(), 0);
  }
}

TEST_F(QtApplicationTest, ASecondStartTellsTheFirstAndEnds) {
  ChildProcess& first = startAndLaunch();
  for (int count = 0; count < 3; ++count) {
    ChildProcess& second = start();
    EXPECT_THAT(second.readLine(), StartsWith("ended"));
    EXPECT_EQ(second.wait(), 0);
    EXPECT_THAT(first.readLine(), StartsWith("reopened"));
  }
}

TEST_F(QtApplicationTest, ASecondStartThatSeesNoBusEndsToo) {
  for (const Environment& first : {Environment{}, Environment{NO_BUS}}) {
    startAndLaunch(first);
    EXPECT_THAT(start({NO_BUS}).readLine(), StartsWith("ended"));
    started_.clear();
  }
}

TEST_F(QtApplicationTest, AKilledInstanceDoesNotBlockTheNext) {
  for (const Environment& changes : {Environment{}, Environment{NO_BUS}}) {
    ChildProcess& killed = startAndLaunch(changes);
    killed.signal(SIGKILL);
    EXPECT_EQ(killed.wait(), -SIGKILL);
    ChildProcess& next = startAndLaunch(changes);
    next.signal(SIGTERM);
    EXPECT_EQ(next.wait(), 0);
  }
}

TEST_F(QtApplicationTest, OfManyStartedAtOnceExactlyOneRuns) {
  for (int count = 0; count < 8; ++count) start();
  int launched = 0;
  for (const ChildProcess& program : started_) {
    if (program.readLine().starts_with("launched")) ++launched;
  }
  EXPECT_EQ(launched, 1);
}

TEST_F(QtApplicationTest, WithoutARuntimeFolderItRunsAllTheSame) {
  startAndLaunch({"XDG_RUNTIME_DIR=/nonexistent", NO_BUS});
}

TEST_F(QtApplicationTest, ASignalThatItWasStartedToIgnoreStaysIgnored) {
  const auto before = std::signal(SIGHUP, SIG_IGN);
  ChildProcess& program = startAndLaunch();
  (void)std::signal(SIGHUP, before);
  program.signal(SIGHUP);
  start().wait();
  EXPECT_THAT(program.readLine(), StartsWith("reopened"));
}

TEST_F(QtApplicationTest, ASignalIsHandledAfterTheEndAsItWasBeforeTheStart) {
  const auto before = std::signal(SIGHUP, SIG_IGN);
  { const TerminationSignals endingTheLoop; }
  EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

TEST_F(QtApplicationTest, StartsAtLoginFromWhereANewerVersionTookItsPlace) {
  program_ = LinuxSession::current().home() + "/notewick program";
  fs::copy_file(APPLICATION_PROBE, program_);
  const ChildProcess& first = startAndLaunch();
  fs::copy_file(program_, program_ + ".new");
  fs::rename(program_ + ".new", program_);
  start().wait();
  EXPECT_EQ(first.readLine(), "reopened " + program_);
}

TEST_F(QtApplicationTest, ChoosesXWaylandForItselfAndNotForWhatItStarts) {
  const ChildProcess display({"Xvfb", "-displayfd", "1", "-nolisten", "tcp"});
  const std::string number = "DISPLAY=:" + display.readLine();
  EXPECT_EQ(start({"-u", "QT_QPA_PLATFORM", number, "WAYLAND_DISPLAY=wayland-0"}).readLine(),
            "launched on xcb");
}

TEST_F(QtApplicationTest, TheUserChoosesThePlatformAndQtsArgumentsAndTheLocaleChangeNothing) {
  const auto check = [this](const Environment& changes) {
    EXPECT_EQ(start(changes).readLine(), "launched on offscreen, for children too");
    started_.clear();
  };
  check({"DISPLAY=:1", "QT_QPA_PLATFORM=offscreen"});
  check({"LC_ALL=C.UTF-8", "QT_QPA_PLATFORM=offscreen"});
  arguments_ = {"-platform", "nothing-of-this-kind", "-style", "nothing-of-this-kind"};
  check({});
}

TEST_F(QtApplicationTest, WithoutADesktopItEndsAndSaysWhy) {
  for (const std::string display : {"", "DISPLAY=:4711", "WAYLAND_DISPLAY=nowhere"}) {
    ChildProcess program({"sh", "-c",
                          "unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY; exec env $1 \"$0\" 2>&1",
                          program_, display});
    EXPECT_EQ(program.readLine(),
              "Notewick needs a desktop: neither DISPLAY nor WAYLAND_DISPLAY leads to one.");
    EXPECT_EQ(program.wait(), 1);
  }
}

TEST_F(QtApplicationTest, APlatformThatQtDoesNotHaveIsNoCrash) {
  ChildProcess& program = start({"QT_QPA_PLATFORM=nothing-of-this-kind"});
  EXPECT_EQ(program.wait(), 1);
}

}  // namespace
}  // namespace notewick
