#include "platform/linux/workspace.h"

#include <QApplication>
#include <QProcess>
#include <filesystem>

#include "platform/linux/session/core_limit.h"
#include "platform/posix/files.h"

namespace notewick {

void DesktopWorkspace::openUrl(const std::string& url) {
  QProcess opener;
  opener.setProgram("xdg-open");
  opener.setArguments({QString::fromStdString(url)});
  opener.setStandardInputFile(QProcess::nullDevice());
  opener.setStandardOutputFile(QProcess::nullDevice());
  opener.setStandardErrorFile(QProcess::nullDevice());
  opener.setChildProcessModifier(allowCores);
  opener.startDetached();
}

void DesktopWorkspace::beep() {
  QApplication::beep();
}

std::string DesktopWorkspace::bundlePath() const {
  std::error_code failure;
  std::string path = std::filesystem::read_symlink("/proc/self/exe", failure).string();
  const std::string_view replaced = " (deleted)";
  if (path.ends_with(replaced) && !std::filesystem::exists(path, failure)) {
    path.resize(path.size() - replaced.size());
  }
  return path;
}

LoginItemForm DesktopWorkspace::loginItemForm() const {
  return LoginItemForm::autostartEntry;
}

std::string DesktopWorkspace::configurationFolder() const {
  const std::string folder = qEnvironmentVariable("XDG_CONFIG_HOME").toStdString();
  return folder.starts_with('/') ? folder : PosixFiles().homeFolder() + "/.config";
}

}  // namespace notewick
