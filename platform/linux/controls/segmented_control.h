#pragma once

#include <QWidget>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class QAbstractButton;

namespace notewick {

/// A row of segments of which one at a time is chosen and stays chosen; none at first. The arrow
/// keys go from one to the next and take the choice along once there is one; the space bar chooses,
/// and Return is left to the window on every desktop.
/// A click chooses as well, and leaves the keyboard in the field where the user types.
///
/// It is painted here. Qt has no such control, and a row of its checkable buttons would not do:
/// Fusion shows the chosen one by a shade whose contrast to the others is below 3
/// (WCAG 2.1, 1.4.11).
///
/// Screen readers see a group of radio buttons, and read the name of the group when it is entered.
class SegmentedControl : public QWidget {
 public:
  SegmentedControl(const std::vector<std::string>& segments, const std::string& label);

  [[nodiscard]] std::optional<std::size_t> selected() const;
  void deselect();

 private:
  std::vector<QAbstractButton*> segments_;
};

}  // namespace notewick
