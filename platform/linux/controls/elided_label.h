#pragma once

#include "platform/linux/controls/panel_look.h"

namespace notewick {

/// One line of text, cut at its tail where it is wider than `maximumWidth`; the tool tip
/// then shows all of it, and screen readers always read all of it.
class ElidedLabel : public Label {
 public:
  ElidedLabel(const std::string& content, double size, Tint tint, int maximumWidth);
};

}  // namespace notewick
