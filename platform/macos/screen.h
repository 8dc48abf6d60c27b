#pragma once

#include "platform/screen.h"

namespace notewick {

/// What is on screen, by accessibility elements. Without trust every read fails.
///
/// A read waits for the other program, at most for what is left of the sample's time; a sample is
/// over as soon as one read has run over.
class AccessibilityScreen final : public Screen {
 public:
  [[nodiscard]] std::unique_ptr<ScreenApplication> frontmostApplication() override;
};

}  // namespace notewick
