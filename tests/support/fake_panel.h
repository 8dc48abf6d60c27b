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
  explicit FakePanel(std::weak_ptr<Delegate> told) : delegate_(std::move(told)) {}
  FakePanel(const FakePanel&) = delete;
  FakePanel& operator=(const FakePanel&) = delete;
  ~FakePanel() override {
    EXPECT_FALSE(*telling_) << "a panel was destroyed inside a call to its delegate";
  }

  void orderFrontRegardless() override { visible = true; }
  void makeKeyAndOrderFront() override { visible = key = true; }
  void orderOut() override { visible = key = false; }

  bool visible = false;
  bool key = false;  ///< has the keyboard

 protected:
  /// Calls the delegate; false when the panel is gone afterwards.
  bool tell(const std::function<void(Delegate&)>& news) {
    const auto telling = telling_;
    const std::weak_ptr<bool> alive = alive_;
    *telling = true;
    if (const auto told = delegate_.lock()) news(*told);
    *telling = false;
    return !alive.expired();
  }

  /// The user closes the panel.
  void closeByUser() {
    if (!visible) {
      ADD_FAILURE() << "the user cannot close a panel that is not on screen";
      return;
    }
    if (tell([](Delegate& told) { told.windowWillClose(); })) visible = key = false;
  }

 private:
  std::weak_ptr<Delegate> delegate_;
  std::shared_ptr<bool> telling_ = std::make_shared<bool>(false);
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace notewick
