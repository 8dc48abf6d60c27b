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

/// Another window, as it differs from this one.
template <class... Changes>
X11WindowIdentity changed(X11WindowIdentity window, Changes... changes) {
  (changes(window), ...);
  return window;
}

constexpr auto OTHER_CONNECTION = [](X11WindowIdentity& window) { window.client = 0x800000; };
constexpr auto OTHER_PROCESS = [](X11WindowIdentity& window) { window.pid = 4712; };
constexpr auto OTHER_MACHINE = [](X11WindowIdentity& window) { window.machine = "far"; };
constexpr auto OTHER_LEADER = [](X11WindowIdentity& window) { window.leader = 0x800001; };
constexpr auto NO_LEADER = [](X11WindowIdentity& window) { window.leader.reset(); };
const auto OTHER_CLASS = [](X11WindowIdentity& window) { window.wmClass = "mail\0Mail\0"s; };
const auto NO_CLASS = [](X11WindowIdentity& window) { window.wmClass.clear(); };

TEST(X11WindowIdentity, WithPidTheProcessDecides) {
  const auto same = [](auto... changes) {
    return isSameApplication(editor(), changed(editor(), changes...));
  };
  EXPECT_TRUE(same(OTHER_CLASS, NO_LEADER)) << "a dialogue of the same process";
  EXPECT_TRUE(same(OTHER_CONNECTION));
  EXPECT_FALSE(same(OTHER_CONNECTION, OTHER_PROCESS));
  EXPECT_FALSE(same(OTHER_CONNECTION, OTHER_MACHINE));
  EXPECT_FALSE(same(OTHER_CONNECTION, OTHER_CLASS)) << "sandboxes count their processes from one";
}

TEST(X11WindowIdentity, WithoutPidConnectionLeaderOrClassDecide) {
  const auto same = [](auto... changes) {
    return isSameApplication(withoutPid(), changed(withoutPid(), changes...));
  };
  EXPECT_TRUE(same(NO_LEADER, NO_CLASS));
  EXPECT_TRUE(isSameApplication(editor(), changed(withoutPid(), NO_LEADER, NO_CLASS)));
  EXPECT_TRUE(same(OTHER_CONNECTION));
  EXPECT_FALSE(same(OTHER_CONNECTION, OTHER_LEADER));
  const auto leaderless = changed(withoutPid(), NO_LEADER);
  EXPECT_TRUE(isSameApplication(leaderless, changed(leaderless, OTHER_CONNECTION)));
  EXPECT_FALSE(isSameApplication(leaderless, changed(leaderless, OTHER_CONNECTION, OTHER_MACHINE)));
  EXPECT_FALSE(isSameApplication(leaderless, changed(leaderless, OTHER_CONNECTION, OTHER_CLASS)));
  EXPECT_FALSE(isSameApplication(editor(), changed(leaderless, OTHER_CONNECTION)))
      << "its class alone puts no window to a process";
}

TEST(X11WindowIdentity, WindowsThatSayNothingStayApart) {
  X11WindowIdentity first;
  first.client = 0x600000;
  X11WindowIdentity second;
  second.client = 0x800000;
  EXPECT_FALSE(isSameApplication(first, second));
}

TEST(X11WindowIdentity, NamesTheProgramByItsClassPartUnlessThatIsDamaged) {
  EXPECT_EQ(classPart("chromium (/home/lena/profile)\0Chromium\0"s), "Chromium");
  EXPECT_EQ(classPart("xterm\0XTerm"s), "XTerm");
  for (const auto& damaged : {""s, "xterm"s, "xterm\0"s, "xterm\0\0"s})
    EXPECT_EQ(classPart(damaged), "");
}

}  // namespace
}  // namespace notewick
