#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"

namespace notewick {

/// What the user looks at, as a test arranges it.
class FakeScreen : public Screen {
 public:
  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;

  /// An application with these windows comes to the front; the first has the focus.
  void show(const std::string& name, const std::vector<std::string>& titles);
  void show(FrontmostApplication application) { application_ = std::move(application); }
  /// Nothing is frontmost.
  void clear() { application_.reset(); }

  std::function<void()> whileReading;  ///< what happens in the meantime; may be absent
  std::size_t applicationReads = 0;    ///< how often the frontmost application was asked for

 private:
  std::optional<FrontmostApplication> application_;
};

}  // namespace notewick
