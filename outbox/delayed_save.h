#pragma once

#include <functional>
#include <map>
#include <memory>

#include "platform/main_loop.h"

namespace notewick {

/// The saving of one list. What the user did is saved at once; what follows by itself, and would
/// come out the same if it happened again, may wait a little for more of its kind. Main thread.
class DelayedSave {
 public:
  /// `save` writes the list as it is when it is called.
  explicit DelayedSave(std::function<void()> save) : save_(std::move(save)) {}

  /// Saves no later than `seconds` from now, together with all that changes until then.
  void within(double seconds);

  /// Saves at once, what waits included.
  void now();

  /// Saves what waits, if anything does: before the program ends.
  void finish();

 private:
  std::function<void()> save_;
  std::map<double, std::unique_ptr<Timer>> waiting_;  ///< by the seconds they were started with
};

}  // namespace notewick
