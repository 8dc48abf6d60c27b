#include "platform/linux/titles/screen_snapshot.h"

#include <utility>

namespace notewick {
namespace {

class SnapshotWindow final : public ScreenWindow {
 public:
  explicit SnapshotWindow(std::optional<std::string> title) : title_(std::move(title)) {}

  std::optional<std::string> title() override { return title_; }

 private:
  std::optional<std::string> title_;
};

class SnapshotApplication final : public ScreenApplication {
 public:
  explicit SnapshotApplication(ScreenSnapshot snapshot) : snapshot_(std::move(snapshot)) {}

  std::optional<std::string> localizedName() override { return snapshot_.name; }

  std::unique_ptr<ScreenWindow> focusedWindow() override {
    if (!snapshot_.focusedTitle) return nullptr;
    return std::make_unique<SnapshotWindow>(*snapshot_.focusedTitle);
  }

  std::vector<std::unique_ptr<ScreenWindow>> windows() override {
    std::vector<std::unique_ptr<ScreenWindow>> windows;
    for (const auto& title : snapshot_.titles) {
      windows.push_back(std::make_unique<SnapshotWindow>(title));
    }
    return windows;
  }

 private:
  ScreenSnapshot snapshot_;
};

}  // namespace

std::unique_ptr<ScreenApplication> applicationOf(ScreenSnapshot snapshot) {
  return std::make_unique<SnapshotApplication>(std::move(snapshot));
}

}  // namespace notewick
