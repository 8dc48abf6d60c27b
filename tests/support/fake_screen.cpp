#include "tests/support/fake_screen.h"

namespace notewick {

class FakeScreenWindow : public ScreenWindow {
 public:
  FakeScreenWindow(FakeScreen& screen, FakeScreen::Title title)
      : screen_(screen), title_(std::move(title)) {}

  std::optional<std::string> title() override {
    return screen_.readSucceeds() ? title_ : std::nullopt;
  }

 private:
  FakeScreen& screen_;
  FakeScreen::Title title_;
};

class FakeScreenApplication : public ScreenApplication {
 public:
  FakeScreenApplication(FakeScreen& screen, FakeScreen::Application application)
      : screen_(screen), application_(std::move(application)) {}

  std::optional<std::string> localizedName() override { return application_.name; }

  std::unique_ptr<ScreenWindow> focusedWindow() override {
    if (!screen_.readSucceeds() || !application_.hasFocusedWindow) return nullptr;
    return std::make_unique<FakeScreenWindow>(screen_, application_.focusedTitle);
  }

  std::vector<std::unique_ptr<ScreenWindow>> windows() override {
    std::vector<std::unique_ptr<ScreenWindow>> all;
    if (!screen_.readSucceeds()) return all;
    for (const auto& title : application_.windows)
      all.push_back(std::make_unique<FakeScreenWindow>(screen_, title));
    return all;
  }

 private:
  FakeScreen& screen_;
  FakeScreen::Application application_;
};

std::unique_ptr<ScreenApplication> FakeScreen::frontmostApplication() {
  ++applicationReads;
  if (whileReading) whileReading();
  if (!application_) return nullptr;
  return std::make_unique<FakeScreenApplication>(*this, *application_);
}

void FakeScreen::show(const std::string& name, const std::vector<std::string>& titles) {
  Application shown{name, std::nullopt, !titles.empty(), {}};
  if (!titles.empty()) shown.focusedTitle = titles.front();
  shown.windows.assign(titles.begin(), titles.end());
  show(std::move(shown));
}

bool FakeScreen::readSucceeds() {
  ++attributeReads;
  if (!readsLeft_) return true;
  if (*readsLeft_ == 0) return false;
  --*readsLeft_;
  return true;
}

}  // namespace notewick
