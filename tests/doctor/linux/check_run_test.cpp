#include "doctor/linux/check_run.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <iostream>
#include <sstream>

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// What is printed, and whether all is well.
std::string printed(const std::vector<Check>& checks, std::chrono::milliseconds patience = 60s) {
  std::ostringstream out;
  const bool isWell = runChecks(checks, patience, out);
  return out.str() + (isWell ? "all is well" : "something is to do");
}

TEST(CheckRun, PrintsALineForEachInTheirOrder) {
  EXPECT_EQ(printed({{"one", [] { return fine("a"); }}, {"two", [] { return fine("b"); }}}),
            "ok    one: a\nok    two: b\nall is well");
  EXPECT_EQ(printed({{"one", [] { return toDo("a"); }}, {"two", [] { return fine("b"); }}}),
            "todo  one: a\nok    two: b\nsomething is to do");
}

TEST(CheckRun, ACheckThatHangsOrCrashesSpoilsNoOther) {
  const Check hangs{"hangs", []() -> Finding {
                      while (true) pause();
                    }};
  const Check crashes{"crashes", []() -> Finding { std::abort(); }};
  const Check leaves{"leaves", []() -> Finding { _exit(0); }};
  const std::string advice =
      " Run notewick-doctor again; where this line stays, show it to whoever helps you.\n";
  EXPECT_EQ(printed({hangs, crashes, leaves, {"well", [] { return fine("a"); }}}, 2s),
            "todo  hangs: did not answer in time." + advice +
                "todo  crashes: ended without an answer." + advice +
                "todo  leaves: ended without an answer." + advice +
                "ok    well: a\nsomething is to do");
}

TEST(CheckRun, WhatACheckPrintsAndStartsIsNotLeft) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const auto start = [] {
    std::cout << "noise" << std::endl;
    if (fork() == 0) pause();
    return fine("started");
  };
  testing::internal::CaptureStdout();
  EXPECT_EQ(printed({{"a program", start}}), "ok    a program: started\nall is well");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  close(ends[1]);
  pollfd started{ends[0], POLLIN, 0};
  EXPECT_EQ(poll(&started, 1, 60'000), 1) << "what the check started keeps the pipe open";
  EXPECT_TRUE(started.revents & POLLHUP);
  close(ends[0]);
}

}  // namespace
}  // namespace notewick
