#pragma once

#include "platform/workspace.h"

namespace notewick {

/// The freedesktop desktop around the program.
class DesktopWorkspace : public Workspace {
 public:
  /// By the desktop's own opener, xdg-open, which is started and not waited for.
  void openUrl(const std::string& url) override;

  void beep() override;

  /// The running executable; also after a newer version took its place on the disk.
  [[nodiscard]] std::string bundlePath() const override;

  [[nodiscard]] LoginItemForm loginItemForm() const override;

  /// XDG_CONFIG_HOME where it is an absolute path, else .config in the home folder.
  [[nodiscard]] std::string configurationFolder() const override;
};

}  // namespace notewick
