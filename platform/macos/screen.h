#pragma once

#include "platform/screen.h"

namespace notewick {

/// What is on screen, by accessibility elements: at most eleven attribute reads for eight windows.
/// Without trust every read fails. A read waits for the other program, at most for what is left of
/// the sample's time; after one read has run over, the others fail at once.
class AccessibilityScreen final : public Screen {
 public:
  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;
};

}  // namespace notewick
