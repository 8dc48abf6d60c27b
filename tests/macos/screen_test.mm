#include "platform/macos/screen.h"

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/macos/accessibility.h"
#include "platform/macos/process_launcher.h"
#include "platform/macos/uuid_source.h"
#include "tests/macos/eventually.h"

namespace notewick {
namespace {

/// A document in the system's own text editor. Needs leave to read other programs' windows.
class MacosScreenTest : public testing::Test {
 protected:
  MacosScreenTest() {
    std::ofstream(file_) << "hello\n";
    TaskLauncher().launch({"/usr/bin/open", {"-a", "TextEdit", file_.string()}});
  }
  ~MacosScreenTest() override { std::filesystem::remove(file_); }

  [[nodiscard]] bool isShown(const std::optional<std::string>& title) const {
    return title && title->find(name_) != std::string::npos;
  }
  [[nodiscard]] std::unique_ptr<ScreenApplication> editor() {
    auto application = screen_.frontmostApplication();
    const bool isEditor = application && application->localizedName() == "TextEdit";
    return isEditor ? std::move(application) : nullptr;
  }

  std::string name_ = "Tobias Hargreave " + CocoaUuidSource().next();
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / (name_ + ".txt");
  AccessibilityScreen screen_;
};

TEST_F(MacosScreenTest, IsTrusted) {
  EXPECT_TRUE(AccessibilityTrust().isTrusted());
  EXPECT_EQ(AccessibilityTrust().remedy(), TrustRemedy::settingsPage);
}

TEST_F(MacosScreenTest, ReadsTheTitleOfTheFocusedWindow) {
  EXPECT_TRUE(eventually([this] {
    const auto application = editor();
    const auto window = application ? application->focusedWindow() : nullptr;
    return window && isShown(window->title());
  }));
}

TEST_F(MacosScreenTest, ReadsTheTitlesOfAllWindows) {
  EXPECT_TRUE(eventually([this] {
    const auto application = editor();
    if (!application) return false;
    for (const auto& window : application->windows()) {
      if (isShown(window->title())) return true;
    }
    return false;
  }));
}

}  // namespace
}  // namespace notewick
