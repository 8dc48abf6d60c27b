#include "platform/linux/panels/move_witness.h"

#include <algorithm>
#include <utility>

namespace notewick {

void MoveWitness::mapped(QPoint place) {
  isDrawn_ = false;
  isPlaced_ = isPlaced_ && placing_ == Placing::once;
  frameIsNew_ = false;
  last_.reset();
  asked_ = {place};
  owed_ = 0;
}

void MoveWitness::asked(QPoint place) {
  asked_.removeAll(place);
  asked_.append(place);
  ++owed_;
}

void MoveWitness::grabbed() {
  isPlaced_ = true;
  frameIsNew_ = false;
  asked_.clear();
  owed_ = 0;
}

Mover MoveWitness::reported(QPoint place) {
  const bool isReframed = std::exchange(frameIsNew_, false);
  const bool wasPlaced = std::exchange(isPlaced_, true) && !isReframed;
  const bool stoodThere = std::exchange(last_, place) == place;
  if (asked_.contains(place)) {
    owed_ = place == asked_.last() ? 0 : std::max<qsizetype>(owed_ - 1, 0);
    return Mover::program;
  }
  if (!wasPlaced || !isDrawn_) return Mover::windowManager;
  if (owed_ > 0) {
    --owed_;
    return Mover::program;
  }
  if (stoodThere) return Mover::windowManager;
  asked_.clear();
  return Mover::user;
}

}  // namespace notewick
