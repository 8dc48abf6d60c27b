#pragma once

#include <QString>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "tests/support/child_process.h"

namespace notewick {

enum class SessionBus { running, none };

/// A user's session without a display, private to one test program: a home folder, XDG folders, and
/// a session bus that starts no program on its own. To be made before the application object.
class LinuxSession {
 public:
  explicit LinuxSession(SessionBus bus);

  [[nodiscard]] const std::string& home() const { return home_; }

  /// Lets the bus start `command` when `name` is asked for.
  void makeActivatable(const std::string& name, const std::string& command) const;

  /// The session of this test program.
  [[nodiscard]] static LinuxSession& current();

 private:
  QTemporaryDir folder_;
  std::string home_;
  std::unique_ptr<ChildProcess> bus_;
};

/// Runs the event loop until `condition` holds; false when it did not within the time.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds limit = std::chrono::seconds(60));

/// Handles all that has been posted and all that the bus has sent by now. What has not happened
/// then was not under way.
void catchUp();

/// Waits until a program owns `name` on the session bus, or until none does.
[[nodiscard]] bool waitForOwner(const QString& name, bool owned = true);

/// The main function of a test program that runs in such a session.
int runTestsInSession(int argc, char** argv, SessionBus bus);

}  // namespace notewick
