#include "ui/start_at_login.h"

namespace notewick {
namespace {

constexpr const char* LABEL = "tools.velk.notewick";

std::string escapedForXml(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

/// An argument of an Exec key: quoted, with the escapes of the quoting rule, then those of a string
/// value, and percent signs doubled (freedesktop.org, Desktop Entry, "The Exec key").
std::string quotedForExec(const std::string& argument) {
  std::string quoted = "\"";
  for (const char character : argument) {
    switch (character) {
      case '"':
      case '`':
      case '$':
        quoted += std::string("\\\\") + character;
        break;
      case '\\':
        quoted += "\\\\\\\\";
        break;
      case '%':
        quoted += "%%";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      case '\t':
        quoted += "\\t";
        break;
      default:
        quoted += character;
    }
  }
  return quoted + "\"";
}

}  // namespace

std::string launchAgentText(const std::string& bundlePath) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\"><dict>\n"
         "  <key>Label</key><string>" +
         std::string(LABEL) +
         "</string>\n"
         "  <key>ProgramArguments</key><array><string>" +
         escapedForXml(bundlePath) +
         "/Contents/MacOS/VELKNotewick</string></array>\n"
         "  <key>RunAtLoad</key><true/>\n"
         "</dict></plist>";
}

std::string autostartEntryText(const std::string& executablePath) {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=VELK Notewick\n"
         "Exec=" +
         quotedForExec(executablePath) +
         "\n"
         "Icon=tools.velk.notewick\n"
         "Terminal=false\n";
}

LoginItemFile loginItemFile(const Workspace& workspace, const std::string& homeFolder) {
  const std::string program = workspace.bundlePath();
  if (workspace.loginItemForm() == LoginItemForm::launchAgent) {
    return {homeFolder + "/Library/LaunchAgents", std::string(LABEL) + ".plist",
            launchAgentText(program), false};
  }
  return {workspace.configurationFolder() + "/autostart", std::string(LABEL) + ".desktop",
          autostartEntryText(program), true};
}

}  // namespace notewick
