#pragma once

#include <QApplication>
#include <memory>

#include "platform/application.h"

namespace notewick {

/// Qt's application object. Closing the last window does not end the program; SIGTERM,
/// SIGINT and SIGHUP do, in order. Its windows run through XWayland unless QT_QPA_PLATFORM says
/// otherwise: native Wayland windows can neither stay on top nor keep their place. It has no
/// display name, which Qt would add to the titles of windows. Qt sets the whole C
/// locale; numbers go back to "C", for the JSON reader stops at a decimal point of several bytes.
/// A desktop that starts again what ran at the logout leaves it out: the user starts it at login or
/// does not, and a second start would open the widget.
/// Making it without a display ends the program with a line on standard error and status 1, and so
/// does losing the display later.
class QtApplication final : public Application {
 public:
  /// `argv` begins with the program's name, which is all that is looked at: Qt knows
  /// arguments of its own, this program none of them. It must stay alive as long as the object.
  explicit QtApplication(char** argv);

  /// Nothing to do here: no window of the program ever asks for a place in the task bar.
  void becomeAccessory() override {}

  int run(std::weak_ptr<ApplicationDelegate> delegate) override;

 private:
  /// When the X server is gone Qt calls exit. Global variables would then be destroyed while Qt is
  /// half gone, and the program would crash; so the process ends at once while this object lives.
  class UntimelyExit {
   public:
    UntimelyExit();
    ~UntimelyExit();
    UntimelyExit(const UntimelyExit&) = delete;
    UntimelyExit& operator=(const UntimelyExit&) = delete;

   private:
    inline static bool isAlive = false;
  };

  int argumentCount_ = 1;
  UntimelyExit untimelyExit_;
  std::unique_ptr<QApplication> application_;
};

}  // namespace notewick
