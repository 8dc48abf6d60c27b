#include "platform/linux/application.h"

#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"

namespace notewick {
namespace {

int& preferringXWayland(int& argc) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "xcb");
  }
  return argc;
}

}  // namespace

QtApplication::QtApplication(int& argc, char** argv)
    : application_(preferringXWayland(argc), argv) {
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
      &application_,
      [delegate] {
        if (const auto told = delegate.lock()) told->applicationDidFinishLaunching();
      },
      Qt::QueuedConnection);
  return QApplication::exec();
}

}  // namespace notewick
