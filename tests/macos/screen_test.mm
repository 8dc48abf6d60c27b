#include "platform/macos/screen.h"

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
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
  [[nodiscard]] std::optional<FrontmostApplication> editor() {
    auto application = screen_.frontmostApplication(8);
    const bool isEditor = application && application->name == "TextEdit";
    return isEditor ? std::move(application) : std::nullopt;
  }

  std::string name_ = "Tobias Hargreave " + CocoaUuidSource().next();
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / (name_ + ".txt");
  AccessibilityScreen screen_;
};

TEST_F(MacosScreenTest, IsTrusted) {
  EXPECT_TRUE(AccessibilityTrust().isTrusted());
  EXPECT_EQ(AccessibilityTrust().remedy(), TrustRemedy::settingsPage);
}

TEST_F(MacosScreenTest, ReadsTheTitleOfTheFocusedWindowAndThoseOfAll) {
  EXPECT_TRUE(eventually([this] {
    const auto application = editor();
    return application && isShown(application->focusedTitle) &&
           std::ranges::any_of(application->titles,
                               [this](const auto& title) { return isShown(title); });
  }));
}

}  // namespace
}  // namespace notewick
