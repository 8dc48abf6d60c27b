#pragma once

#include <QObject>
#include <functional>
#include <string>

namespace notewick {

/// A file that one process at a time can hold. The system lets go of it when the process ends,
/// however that happens, so that a lock never outlives its holder.
class LockFile {
 public:
  explicit LockFile(std::string path) : path_(std::move(path)) {}
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;
  ~LockFile();

  /// False when another process holds it. True also where no such file can be made.
  [[nodiscard]] bool claim();

 private:
  std::string path_;
  int descriptor_ = -1;
};

/// One instance of the program for a user. The first holds a name on the session bus, by which a
/// second start reaches it, and a lock in the user's runtime folder, so that two that see different
/// buses, or none, do not write the same files. Main thread.
class SingleInstance final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "tools.velk.Notewick")

 public:
  /// `activated` is called, in a later turn, whenever the program is started again.
  explicit SingleInstance(std::function<void()> activated);

  /// True when this is the first instance. Otherwise the first one knows now that it was
  /// started again, where there is a bus to reach it by.
  [[nodiscard]] bool claim();

 public slots:
  /// Called over the bus by a second start.
  Q_SCRIPTABLE void Activate();

 private:
  [[nodiscard]] bool claimName();

  std::function<void()> activated_;
  LockFile lock_;
};

}  // namespace notewick
