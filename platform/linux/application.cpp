#include "platform/linux/application.h"

#include <wayland-client.h>
#include <xcb/xcb.h>

#include <QSessionManager>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "platform/linux/session/single_instance.h"
#include "platform/linux/session/termination_signals.h"
#include "platform/linux/titles/application_names.h"

namespace notewick {
namespace {

bool isSet(const char* variable) {
  return !qEnvironmentVariableIsEmpty(variable);
}

bool xServerAnswers() {
  const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection(
      xcb_connect(nullptr, nullptr), xcb_disconnect);
  return xcb_connection_has_error(connection.get()) == 0;
}

bool compositorAnswers() {
  const std::unique_ptr<wl_display, void (*)(wl_display*)> display(
      wl_display_connect(std::getenv("WAYLAND_DISPLAY")), wl_display_disconnect);
  return display != nullptr;
}

/// The way to the desktop: XWayland goes before Wayland.
const char* choosePlatform() {
  if (isSet("DISPLAY") && xServerAnswers()) return "xcb";
  if (isSet("WAYLAND_DISPLAY") && compositorAnswers()) return "wayland";
  std::fputs("Notewick needs a desktop: neither DISPLAY nor WAYLAND_DISPLAY leads to one.\n",
             stderr);
  std::exit(EXIT_FAILURE);
}

/// Makes the choice while Qt starts, and not for the programs that are started later. One
/// that the user made stands.
class PlatformChoice {
 public:
  PlatformChoice() : isOurs_(!isSet("QT_QPA_PLATFORM")) {
    if (isOurs_) qputenv("QT_QPA_PLATFORM", choosePlatform());
  }
  PlatformChoice(const PlatformChoice&) = delete;
  PlatformChoice& operator=(const PlatformChoice&) = delete;
  ~PlatformChoice() {
    if (isOurs_) qunsetenv("QT_QPA_PLATFORM");
  }

 private:
  bool isOurs_;
};

/// Ends the process, without Qt's core dump, where Qt cannot start: its part for
/// the platform may not be installed, or lead nowhere.
class StartFailures {
 public:
  StartFailures() { others = qInstallMessageHandler(pass); }
  StartFailures(const StartFailures&) = delete;
  StartFailures& operator=(const StartFailures&) = delete;
  ~StartFailures() { qInstallMessageHandler(others); }

 private:
  static void pass(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    others(type, context, message);
    if (type == QtFatalMsg) std::_Exit(EXIT_FAILURE);
  }

  inline static QtMessageHandler others = nullptr;
};

std::unique_ptr<QApplication> startQt(int& argc, char** argv) {
  const StartFailures failures;
  const PlatformChoice platform;
  auto application = std::make_unique<QApplication>(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  return application;
}

}  // namespace

QtApplication::UntimelyExit::UntimelyExit() {
  isAlive = true;
  std::atexit([] {
    if (isAlive) std::_Exit(EXIT_FAILURE);
  });
}

QtApplication::UntimelyExit::~UntimelyExit() {
  isAlive = false;
}

QtApplication::QtApplication(char** argv) : application_(startQt(argumentCount_, argv)) {
  QObject::connect(
      application_.get(), &QGuiApplication::saveStateRequest, application_.get(),
      [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
      Qt::DirectConnection);
  QApplication::setQuitOnLastWindowClosed(false);
  QCoreApplication::setApplicationName(OWN_WINDOW_CLASS);
  QGuiApplication::setDesktopFileName(OWN_DESKTOP_ENTRY);
}

int QtApplication::run(std::weak_ptr<ApplicationDelegate> delegate) {
  SingleInstance instance([delegate] {
    if (const auto target = delegate.lock()) target->applicationReopened();
  });
  if (!instance.claim()) return 0;
  const TerminationSignals endingTheLoop;
  QMetaObject::invokeMethod(
      application_.get(),
      [delegate] {
        if (const auto target = delegate.lock()) target->applicationDidFinishLaunching();
      },
      Qt::QueuedConnection);
  const int status = QApplication::exec();
  if (const auto target = delegate.lock()) target->applicationWillTerminate();
  return status;
}

}  // namespace notewick
