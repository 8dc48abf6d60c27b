#pragma once

#include "platform/linux/controls/panel_look.h"

namespace notewick {

/// A label for news: a screen reader speaks its text when it appears. It is hidden while empty.
class AnnouncingLabel : public Label {
 public:
  AnnouncingLabel(double size, Tint tint);

  void announce(const std::string& content);
};

}  // namespace notewick
