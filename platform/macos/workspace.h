#pragma once

#include "platform/workspace.h"

namespace notewick {

class CocoaWorkspace final : public Workspace {
 public:
  void openUrl(const std::string& url) override;
  void beep() override;
  [[nodiscard]] std::string bundlePath() const override;
  [[nodiscard]] LoginItemForm loginItemForm() const override { return LoginItemForm::launchAgent; }
  [[nodiscard]] std::string configurationFolder() const override;
};

}  // namespace notewick
