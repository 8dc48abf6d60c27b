#include "doctor/desktop_findings.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

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
  EXPECT_EQ(aboutSession({"tty", "", false}),
            toDo("no display. Run notewick-doctor in a terminal on the desktop."));
}

TEST(DesktopFindings, TitlesNeedTrustAndAWindow) {
  EXPECT_EQ(aboutTitles({true, "X11", true, 3}), fine("3 seen by X11"));
  EXPECT_EQ(
      aboutTitles({true, "X11", true, 0}),
      toDo("none seen by X11. Click a window with a title, and run notewick-doctor again while it "
           "is in front."));
  EXPECT_EQ(aboutTitles({true, "AT-SPI", false, 0}),
            toDo("cannot be read by AT-SPI. Choose “Can't see your screen yet — click to fix” in "
                 "Notewick's menu, and log out and in once."));
}

TEST(DesktopFindings, WithoutADisplayThereAreNoTitles) {
  EXPECT_EQ(aboutTitles({.hasDisplay = false}), toDo("cannot be read: no display."));
}

TEST(DesktopFindings, AnyKindOfTrayIsFine) {
  EXPECT_EQ(aboutTray(TrayKind::notifierItems), fine("takes status notifier items"));
  EXPECT_EQ(aboutTray(TrayKind::embeddedIcons), fine("takes embedded icons"));
  EXPECT_EQ(
      aboutTray(TrayKind::none),
      toDo("none. Right-click the widget for the menu, or add a tray to the desktop's panel."));
}

TEST(DesktopFindings, ASecretStoreShouldBeOpenAndHoldASignIn) {
  EXPECT_EQ(aboutSecretStore({StoreState::open, true}), fine("open, holds a sign-in"));
  EXPECT_EQ(aboutSecretStore({StoreState::notRunning, false}),
            fine("present, starts when it is needed"));
  EXPECT_EQ(aboutSecretStore({StoreState::open, false}),
            toDo("open, holds no sign-in. Choose “Sign in to VELK…” in Notewick's menu."));
  EXPECT_EQ(aboutSecretStore({StoreState::locked, true}),
            toDo("locked, holds a sign-in. Open it when Notewick asks for its password."));
  EXPECT_EQ(aboutSecretStore({StoreState::locked, false}),
            toDo("locked, holds no sign-in. Choose “Sign in to VELK…” in Notewick's menu."));
  EXPECT_EQ(aboutSecretStore({StoreState::silent, false}),
            toDo("does not answer. Log out and in."));
  EXPECT_EQ(aboutSecretStore({StoreState::none, false}),
            toDo("none: a sign-in lasts until Notewick quits. Install gnome-keyring to keep it."));
}

}  // namespace
}  // namespace notewick
