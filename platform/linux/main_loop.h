#pragma once

#include <QObject>

#include "platform/main_loop.h"

namespace notewick {

/// Qt's event loop. Timers keep time to the millisecond, not to the twentieth part of their
/// interval that Qt's default takes for good enough. A repeating timer makes up for firings that it
/// missed by less than a second, and leaves out those of a longer stall. Timers need the
/// application object; `post` does not, and what is posted before the loop runs waits for it.
class QtMainLoop : public MainLoop {
 public:
  void post(std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Timer> startOneShot(double seconds,
                                                    std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Timer> startRepeating(double seconds,
                                                      std::function<void()> action) override;

 private:
  QObject mainThread_;
};

}  // namespace notewick
