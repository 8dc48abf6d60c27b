#include "doctor/desktop_findings.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

void expectToDo(const Finding& finding, const std::string& text) {
  EXPECT_FALSE(finding.ok);
  EXPECT_EQ(finding.text, text);
}

TEST(DesktopFindings, VersionsAreTold) {
  EXPECT_EQ(
      aboutVersions({"1.0", "Qt 6.4.2", "libcurl 7.88.1", "Debian GNU/Linux 12 (bookworm)"}),
      fine("Notewick 1.0, Qt 6.4.2, libcurl 7.88.1, distribution Debian GNU/Linux 12 (bookworm)"));
  EXPECT_EQ(aboutVersions({"1.0", "Qt 6.4.2", "libcurl 7.88.1", ""}),
            fine("Notewick 1.0, Qt 6.4.2, libcurl 7.88.1, distribution unknown"));
}

TEST(DesktopFindings, ASessionNeedsADisplay) {
  EXPECT_EQ(aboutSession({"x11", "XFCE", true}), fine("type x11, desktop XFCE"));
  EXPECT_EQ(aboutSession({"", "", true}), fine("type unknown, desktop unknown"));
  expectToDo(aboutSession({"tty", "", false}),
             "no display. Run notewick-doctor in a terminal on the desktop.");
}

TEST(DesktopFindings, TitlesNeedTrustAndAWindow) {
  EXPECT_EQ(aboutTitles({true, "X11", true, 3}), fine("3 seen by X11"));
  expectToDo(
      aboutTitles({true, "X11", true, 0}),
      "none seen by X11. Click a window with a title, and run notewick-doctor again while it "
      "is in front.");
  expectToDo(aboutTitles({true, "AT-SPI", false, 0}),
             "cannot be read by AT-SPI. Choose “Can't see your screen yet — click to fix” in "
             "Notewick's menu, and log out and in once.");
}

TEST(DesktopFindings, WithoutADisplayThereAreNoTitles) {
  expectToDo(aboutTitles({.hasDisplay = false}), "cannot be read: no display.");
}

TEST(DesktopFindings, AnyKindOfTrayIsFine) {
  EXPECT_EQ(aboutTray(TrayKind::notifierItems), fine("takes status notifier items"));
  EXPECT_EQ(aboutTray(TrayKind::embeddedIcons), fine("takes embedded icons"));
  expectToDo(aboutTray(TrayKind::none),
             "none. Right-click the widget for the menu, or add a tray to the desktop's panel.");
}

TEST(DesktopFindings, ASecretStoreShouldBeOpenAndHoldASignIn) {
  EXPECT_EQ(aboutSecretStore({StoreState::open, true}), fine("open, holds a sign-in"));
  EXPECT_EQ(aboutSecretStore({StoreState::notRunning, false}),
            fine("present, starts when it is needed"));
  expectToDo(aboutSecretStore({StoreState::open, false}),
             "open, holds no sign-in. Choose “Sign in to VELK…” in Notewick's menu.");
  expectToDo(aboutSecretStore({StoreState::locked, true}),
             "locked, holds a sign-in. Open it when Notewick asks for its password.");
  expectToDo(aboutSecretStore({StoreState::locked, false}),
             "locked, holds no sign-in. Choose “Sign in to VELK…” in Notewick's menu.");
  expectToDo(aboutSecretStore({StoreState::silent, false}), "does not answer. Log out and in.");
  expectToDo(aboutSecretStore({StoreState::none, false}),
             "none: a sign-in lasts until Notewick quits. Install gnome-keyring to keep it.");
}

}  // namespace
}  // namespace notewick
