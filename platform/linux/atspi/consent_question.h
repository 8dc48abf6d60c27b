#pragma once

#include <QMessageBox>
#include <QPointer>
#include <functional>

namespace notewick {

/// Asks the user whether the desktop's accessibility setting may be turned on. Stands above other
/// windows in the bottom left corner: at the first start the sign-in panel opens in the middle at
/// the same time, has the keyboard, and must not cover the buttons. Main thread.
class ConsentQuestion {
 public:
  ConsentQuestion() = default;
  ~ConsentQuestion() { delete box_; }
  ConsentQuestion(const ConsentQuestion&) = delete;
  ConsentQuestion& operator=(const ConsentQuestion&) = delete;

  /// Shows the question without blocking; brings it to the front when it is open already. `onYes`
  /// is called only if the user says so; every other way to close it is a no.
  void ask(std::function<void()> onYes);

 private:
  QPointer<QMessageBox> box_;
};

}  // namespace notewick
