#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace notewick {

/// What the fake panels share: whether they are on screen, and the rule that a panel must not be
/// destroyed inside a call to its delegate.
template <class Port, class Delegate>
class FakePanel : public Port {
 public:
  explicit FakePanel(std::weak_ptr<Delegate> owner) : delegate_(std::move(owner)) {}
  FakePanel(const FakePanel&) = delete;
  FakePanel& operator=(const FakePanel&) = delete;
  ~FakePanel() override {
    EXPECT_FALSE(*callingDelegate_) << "a panel was destroyed inside a call to its delegate";
  }

  void orderFrontRegardless() override { visible = true; }
  void makeKeyAndOrderFront() override { visible = key = true; }
  void orderOut() override { visible = key = false; }

  bool visible = false;
  bool key = false;  ///< has the keyboard

 protected:
  /// Calls the delegate; false when the panel is gone afterwards.
  bool callDelegate(const std::function<void(Delegate&)>& call) {
    const auto calling = callingDelegate_;
    const std::weak_ptr<bool> alive = alive_;
    *calling = true;
    if (const auto owner = delegate_.lock()) call(*owner);
    *calling = false;
    return !alive.expired();
  }

  /// The user closes the panel.
  void closeByUser() {
    if (!visible) {
      ADD_FAILURE() << "the user cannot close a panel that is not on screen";
      return;
    }
    const bool exists = callDelegate([](Delegate& owner) { owner.windowWillClose(); });
    if (exists) visible = key = false;
  }

 private:
  std::weak_ptr<Delegate> delegate_;
  std::shared_ptr<bool> callingDelegate_ = std::make_shared<bool>(false);
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace notewick
