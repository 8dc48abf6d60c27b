#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"

namespace notewick {

/// What the user looks at, as a test arranges it.
class FakeScreen : public Screen {
 public:
  /// Titles as windows give them; absent is a read that fails.
  using Title = std::optional<std::string>;

  struct Application {
    Title name;
    Title focusedTitle;
    bool hasFocusedWindow = true;
    std::vector<Title> windows;
  };

  [[nodiscard]] std::unique_ptr<ScreenApplication> frontmostApplication() override;

  /// An application with these windows comes to the front; the first has the focus.
  void show(const std::string& name, const std::vector<std::string>& titles);
  void show(Application application) { application_ = std::move(application); }
  /// Nothing is frontmost.
  void clear() { application_.reset(); }

  /// After so many more attribute reads every window is gone and all reads fail.
  void vanishAfter(std::size_t reads) { readsLeft_ = reads; }

  std::function<void()> whileReading;  ///< what happens in the meantime; may be absent
  std::size_t applicationReads = 0;    ///< how often the frontmost application was asked for
  std::size_t attributeReads = 0;      ///< reads of the focused window, the window list and titles

 private:
  friend class FakeScreenApplication;
  friend class FakeScreenWindow;

  [[nodiscard]] bool readSucceeds();

  std::optional<Application> application_;
  std::optional<std::size_t> readsLeft_;
};

}  // namespace notewick
