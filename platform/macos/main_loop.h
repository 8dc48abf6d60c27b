#pragma once

#include "platform/main_loop.h"

namespace notewick {

/// The main run loop. Timers belong to its common modes, so that they fire while a menu is open or
/// a window is dragged too; what is posted runs then as well.
class CocoaMainLoop final : public MainLoop {
 public:
  void post(std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Timer> startOneShot(double seconds,
                                                    std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Timer> startRepeating(double seconds,
                                                      std::function<void()> action) override;
};

}  // namespace notewick
