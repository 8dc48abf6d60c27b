#pragma once

#include <QTimer>
#include <QWidget>

namespace notewick {

/// Says that something is under way for an unknown time. It turns while it is shown and costs
/// nothing while it is hidden, as it is at first. It is painted here because Qt has no spinner.
class Spinner : public QWidget {
 public:
  Spinner();

 protected:
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  QTimer turning_;
  int step_ = 0;
};

}  // namespace notewick
