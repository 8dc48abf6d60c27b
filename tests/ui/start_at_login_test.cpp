#include "ui/start_at_login.h"

#include <gmock/gmock.h>

#include "tests/support/fake_desktop.h"

namespace notewick {
namespace {

using testing::FieldsAre;
using testing::HasSubstr;

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

TEST(StartAtLogin, TheAutostartEntryIsExactlyThis) {
  EXPECT_EQ(autostartEntryText("/opt/notewick/bin/notewick"),
            "[Desktop Entry]\n"
            "Type=Application\n"
            "Name=VELK Notewick\n"
            "Exec=\"/opt/notewick/bin/notewick\"\n"
            "Icon=tools.velk.notewick\n"
            "Terminal=false\n");
}

TEST(StartAtLogin, PathsAreEscapedAsTheFormatWants) {
  EXPECT_THAT(launchAgentText("/A & B/<x>.app"), HasSubstr("<string>/A &amp; B/&lt;x&gt;.app/"));
  EXPECT_THAT(autostartEntryText("/a b/100%/\"$`\\x"),
              HasSubstr(R"(Exec="/a b/100%%/\\"\\$\\`\\\\x")"));
  EXPECT_THAT(autostartEntryText("/a\nHidden=true\r\tb"),
              HasSubstr(R"(Exec="/a\nHidden=true\r\tb")"))
      << "one line";
}

TEST(StartAtLogin, OnlyTheAutostartFolderIsMade) {
  FakeWorkspace workspace;
  EXPECT_THAT(loginItemFile(workspace, "/home/ada"),
              FieldsAre("/home/ada/Library/LaunchAgents", "tools.velk.notewick.plist",
                        launchAgentText("/Applications/VELK Notewick.app"), false));
  workspace.form = LoginItemForm::autostartEntry;
  workspace.bundle = "/usr/bin/notewick";
  workspace.configuration = "/home/ada/.settings";
  EXPECT_THAT(loginItemFile(workspace, "/home/ada"),
              FieldsAre("/home/ada/.settings/autostart", "tools.velk.notewick.desktop",
                        autostartEntryText("/usr/bin/notewick"), true));
}

}  // namespace
}  // namespace notewick
