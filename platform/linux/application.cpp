#include "platform/linux/application.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"

namespace notewick {
namespace {

/// Chooses XWayland while the toolkit starts, and not for the programs that are started later.
class PreferringXWayland {
 public:
  PreferringXWayland()
      : applies_(qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
                 !qEnvironmentVariableIsEmpty("DISPLAY")) {
    if (applies_) qputenv("QT_QPA_PLATFORM", "xcb");
  }
  PreferringXWayland(const PreferringXWayland&) = delete;
  PreferringXWayland& operator=(const PreferringXWayland&) = delete;
  ~PreferringXWayland() {
    if (applies_) qunsetenv("QT_QPA_PLATFORM");
  }

 private:
  bool applies_;
};

// The toolkit would end with a core dump.
void requireDisplay() {
  for (const char* const name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    if (!qEnvironmentVariableIsEmpty(name)) return;
  }
  std::fputs("Notewick needs a desktop: neither DISPLAY nor WAYLAND_DISPLAY is set.\n", stderr);
  std::exit(EXIT_FAILURE);
}

std::unique_ptr<QApplication> startToolkit(int& argc, char** argv) {
  requireDisplay();
  const PreferringXWayland platform;
  auto application = std::make_unique<QApplication>(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  return application;
}

}  // namespace

QtApplication::QtApplication(int& argc, char** argv) : application_(startToolkit(argc, argv)) {
  QApplication::setQuitOnLastWindowClosed(false);
  QCoreApplication::setApplicationName("notewick");
  QGuiApplication::setDesktopFileName("tools.velk.notewick");
}

int QtApplication::run(std::weak_ptr<ApplicationDelegate> delegate) {
  SingleInstance instance([delegate] {
    if (const auto told = delegate.lock()) told->applicationReopened();
  });
  if (!instance.claim()) return 0;
  const TerminationSignals endingTheLoop;
  QMetaObject::invokeMethod(
      application_.get(),
      [delegate] {
        if (const auto told = delegate.lock()) told->applicationDidFinishLaunching();
      },
      Qt::QueuedConnection);
  return QApplication::exec();
}

}  // namespace notewick
