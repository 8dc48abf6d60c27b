#pragma once

#include <QLockFile>
#include <QObject>
#include <functional>
#include <memory>

namespace notewick {

/// One instance of the program for a user's session: the first holds a name on the session bus, and
/// where there is no bus a lock file in the user's runtime folder. A lock left by a process that is
/// gone does not count. Main thread.
class SingleInstance final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "tools.velk.Notewick")

 public:
  /// `activated` is called, in a later turn, whenever the program is started again.
  explicit SingleInstance(std::function<void()> activated);

  /// True when this is the first instance. Otherwise the first one has been told that it was
  /// started again, where there is a bus to tell it by.
  [[nodiscard]] bool claim();

 public slots:
  /// Called over the bus by a second start.
  Q_SCRIPTABLE void Activate();

 private:
  [[nodiscard]] bool claimName();
  [[nodiscard]] bool claimLockFile();

  std::function<void()> activated_;
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace notewick
