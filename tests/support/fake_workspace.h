#pragma once

#include <string>
#include <vector>

#include "platform/workspace.h"

namespace notewick {

/// The desktop around the program: opens nothing, counts its beeps.
class FakeWorkspace : public Workspace {
 public:
  void openUrl(const std::string& url) override { openedUrls.push_back(url); }
  void beep() override { ++beeps; }
  [[nodiscard]] std::string bundlePath() const override { return bundle; }
  [[nodiscard]] LoginItemForm loginItemForm() const override { return form; }
  [[nodiscard]] std::string configurationFolder() const override { return configuration; }

  std::vector<std::string> openedUrls;
  int beeps = 0;
  std::string bundle = "/Applications/VELK Notewick.app";
  LoginItemForm form = LoginItemForm::launchAgent;
  std::string configuration = "/home/ada/.config";
};

}  // namespace notewick
