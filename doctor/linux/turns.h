#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>

namespace notewick {

/// Qt's event loop for a check.
class Turns {
 public:
  /// Lets things happen until `isOver`, or for as long as `limit`.
  static void until(const std::function<bool()>& isOver, std::chrono::milliseconds limit) {
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
      if (isOver()) loop.quit();
    });
    look.start(std::chrono::milliseconds(20));
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
  }

 private:
  int count_ = 1;
  char name_[16] = "notewick-doctor";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
};

}  // namespace notewick
