#include "platform/linux/x11/x11_window_identity.h"

#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

using std::string_literals::operator""s;

X11WindowIdentity editor() {
  return {.client = 0x600000,
          .pid = 4711,
          .machine = "desk",
          .wmClass = "editor\0Editor\0"s,
          .leader = 0x600001};
}

X11WindowIdentity withoutPid() {
  auto window = editor();
  window.pid.reset();
  return window;
}

TEST(X11WindowIdentity, OneProcessIsOneApplication) {
  auto dialog = editor();
  dialog.wmClass = "calc\0Calc\0"s;
  dialog.leader.reset();
  EXPECT_TRUE(isSameApplication(editor(), dialog));
}

TEST(X11WindowIdentity, OneProcessMayHaveTwoConnections) {
  auto other = editor();
  other.client = 0x800000;
  EXPECT_TRUE(isSameApplication(editor(), other));
}

TEST(X11WindowIdentity, AnotherProcessOfTheSameProgramIsAnotherApplication) {
  auto other = editor();
  other.client = 0x800000;
  other.pid = 4712;
  EXPECT_FALSE(isSameApplication(editor(), other));
}

TEST(X11WindowIdentity, TheSameNumberOnAnotherMachineIsAnotherProcess) {
  auto remote = editor();
  remote.client = 0x800000;
  remote.machine = "far";
  EXPECT_FALSE(isSameApplication(editor(), remote));
}

TEST(X11WindowIdentity, SandboxesThatCountFromOneAreToldApart) {
  auto sandboxed = editor();
  sandboxed.client = 0x800000;
  sandboxed.wmClass = "mail\0Mail\0"s;
  EXPECT_FALSE(isSameApplication(editor(), sandboxed));
}

TEST(X11WindowIdentity, WithoutPidTheConnectionDecides) {
  auto second = withoutPid();
  second.leader.reset();
  second.wmClass.clear();
  EXPECT_TRUE(isSameApplication(withoutPid(), second));
  EXPECT_TRUE(isSameApplication(editor(), second));
}

TEST(X11WindowIdentity, WithoutPidTheLeaderDecides) {
  auto second = withoutPid();
  second.client = 0x800000;
  EXPECT_TRUE(isSameApplication(withoutPid(), second));
  second.leader = 0x800001;
  EXPECT_FALSE(isSameApplication(withoutPid(), second));
}

TEST(X11WindowIdentity, WithoutPidAndLeaderTheClassDecides) {
  auto first = withoutPid();
  first.leader.reset();
  auto second = first;
  second.client = 0x800000;
  EXPECT_TRUE(isSameApplication(first, second));
  second.machine = "far";
  EXPECT_FALSE(isSameApplication(first, second));
  second.machine = first.machine;
  second.wmClass = "mail\0Mail\0"s;
  EXPECT_FALSE(isSameApplication(first, second));
}

TEST(X11WindowIdentity, WindowsThatSayNothingStayApart) {
  X11WindowIdentity first;
  first.client = 0x600000;
  X11WindowIdentity second;
  second.client = 0x800000;
  EXPECT_FALSE(isSameApplication(first, second));
}

TEST(X11WindowIdentity, ANamelessWindowIsNotPutToAProcessByItsClass) {
  auto other = withoutPid();
  other.client = 0x800000;
  other.leader.reset();
  EXPECT_FALSE(isSameApplication(editor(), other));
}

TEST(X11WindowIdentity, NamesTheProgramByItsClassPart) {
  EXPECT_EQ(classPart("chromium (/home/lena/profile)\0Chromium\0"s), "Chromium");
  EXPECT_EQ(classPart("xterm\0XTerm"s), "XTerm");
}

TEST(X11WindowIdentity, ADamagedClassNamesNothing) {
  EXPECT_EQ(classPart(""), "");
  EXPECT_EQ(classPart("xterm"), "");
  EXPECT_EQ(classPart("xterm\0"s), "");
  EXPECT_EQ(classPart("xterm\0\0"s), "");
}

}  // namespace
}  // namespace notewick
