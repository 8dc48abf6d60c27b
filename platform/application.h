#pragma once

#include <memory>

namespace notewick {

/// Told what happens to the application. Main thread.
class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;

  /// Called once, when the event loop has started.
  virtual void applicationDidFinishLaunching() = 0;

  /// The user started the program again while it runs.
  virtual void applicationReopened() = 0;

  /// Called once, when the event loop ends because the user quits or logs out, or a signal asks the
  /// program to end. Not called when the desktop goes away or the process is killed.
  virtual void applicationWillTerminate() = 0;
};

/// The application object of the platform. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  /// Makes the program an accessory: no Dock icon or task-bar entry, no menu bar of its own.
  virtual void becomeAccessory() = 0;

  /// Runs the event loop until the application terminates and gives the exit status. The delegate
  /// is held weakly. Returns at once when another instance of the program runs for this user, after
  /// asking that one to show its widget.
  virtual int run(std::weak_ptr<ApplicationDelegate> delegate) = 0;
};

}  // namespace notewick
