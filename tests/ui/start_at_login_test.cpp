#include "ui/start_at_login.h"

#include <gtest/gtest.h>

#include "tests/support/fake_workspace.h"

namespace notewick {
namespace {

TEST(StartAtLogin, TheLaunchAgentIsExactlyThis) {
  EXPECT_EQ(launchAgentText("/Applications/VELK Notewick.app"),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>
  <key>Label</key><string>tools.velk.notewick</string>
  <key>ProgramArguments</key><array><string>/Applications/VELK Notewick.app/Contents/MacOS/VELKNotewick</string></array>
  <key>RunAtLoad</key><true/>
</dict></plist>)");
}

TEST(StartAtLogin, TheLaunchAgentEscapesWhatXmlWantsEscaped) {
  EXPECT_NE(launchAgentText("/A & B/<x>.app")
                .find("<string>/A &amp; B/&lt;x&gt;.app/Contents/MacOS/VELKNotewick</string>"),
            std::string::npos);
}

TEST(StartAtLogin, TheAutostartEntryIsExactlyThis) {
  EXPECT_EQ(autostartEntryText("/opt/notewick/bin/notewick"),
            "[Desktop Entry]\n"
            "Type=Application\n"
            "Name=VELK Notewick\n"
            "Exec=\"/opt/notewick/bin/notewick\"\n"
            "Icon=tools.velk.notewick\n"
            "Terminal=false\n");
}

TEST(StartAtLogin, TheAutostartEntryQuotesItsProgram) {
  EXPECT_NE(autostartEntryText("/a b/100%/\"$`\\x").find(R"(Exec="/a b/100%%/\\"\\$\\`\\\\x")"),
            std::string::npos);
}

TEST(StartAtLogin, ALaunchAgentGoesToItsFolderWhichIsNotMade) {
  FakeWorkspace workspace;
  const auto item = loginItemFile(workspace, "/home/ada");
  EXPECT_EQ(item.folder, "/home/ada/Library/LaunchAgents");
  EXPECT_EQ(item.name, "tools.velk.notewick.plist");
  EXPECT_EQ(item.text, launchAgentText("/Applications/VELK Notewick.app"));
  EXPECT_FALSE(item.makesFolder);
}

TEST(StartAtLogin, AnAutostartEntryGoesToItsFolderWhichIsMade) {
  FakeWorkspace workspace;
  workspace.form = LoginItemForm::autostartEntry;
  workspace.bundle = "/usr/bin/notewick";
  const auto item = loginItemFile(workspace, "/home/ada");
  EXPECT_EQ(item.folder, "/home/ada/.config/autostart");
  EXPECT_EQ(item.name, "tools.velk.notewick.desktop");
  EXPECT_EQ(item.text, autostartEntryText("/usr/bin/notewick"));
  EXPECT_TRUE(item.makesFolder);
}

}  // namespace
}  // namespace notewick
