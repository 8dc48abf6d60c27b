#include "tests/support/linux_session.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QEventLoop>
#include <QTimer>
#include <filesystem>
#include <fstream>

namespace notewick {
namespace {

LinuxSession* currentSession = nullptr;

constexpr const char* BUS_CONFIGURATION = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=HOME/bus</listen>
  <servicedir>HOME/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void clearEnvironment(const std::string& home) {
  for (const char* name :
       {"DISPLAY", "WAYLAND_DISPLAY", "SESSION_MANAGER", "SSL_CERT_FILE", "SSL_CERT_DIR", "TZ"}) {
    qunsetenv(name);
  }
  const auto set = [](const char* name, const std::string& value) {
    qputenv(name, QByteArray::fromStdString(value));
  };
  set("HOME", home);
  set("XDG_RUNTIME_DIR", home);
  set("XDG_CONFIG_HOME", home + "/.config");
  set("XDG_CONFIG_DIRS", home + "/for-all:" + home + "/for-all-too");
  set("XDG_DATA_HOME", home + "/.local/share");
  set("XDG_CACHE_HOME", home + "/.cache");
  set("QT_QPA_PLATFORM", "offscreen");
  set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + home + "/bus");
}

std::unique_ptr<ChildProcess> startBus(const std::string& home) {
  const std::string file = home + "/bus.conf";
  const QString text = QString(BUS_CONFIGURATION).replace("HOME", QString::fromStdString(home));
  std::ofstream(file) << text.toStdString();
  auto bus = std::make_unique<ChildProcess>(std::vector<std::string>{
      "dbus-daemon", "--config-file=" + file, "--nofork", "--print-address=1"});
  (void)bus->readLine();
  return bus;
}

}  // namespace

LinuxSession::LinuxSession(SessionBus bus) : home_(folder_.path().toStdString()) {
  currentSession = this;
  clearEnvironment(home_);
  std::filesystem::create_directory(home_ + "/services");
  if (bus == SessionBus::running) bus_ = startBus(home_);
}

void LinuxSession::makeActivatable(const std::string& name, const std::string& command) const {
  std::ofstream(home_ + "/services/" + name + ".service")
      << "[D-BUS Service]\nName=" << name << "\nExec=" << command << "\n";
  QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
      "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig"));
}

LinuxSession& LinuxSession::current() {
  return *currentSession;
}

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    QEventLoop turns;
    QTimer::singleShot(2, Qt::PreciseTimer, &turns, &QEventLoop::quit);
    turns.exec();
  }
  return true;
}

void catchUp() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) (void)bus.interface()->isServiceRegistered("org.freedesktop.DBus");
  while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) continue;
}

bool waitForOwner(const QString& name, bool owned) {
  return waitUntil([&] {
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value() == owned;
  });
}

int runTestsInSession(int argc, char** argv, SessionBus bus) {
  testing::InitGoogleTest(&argc, argv);
  const LinuxSession session(bus);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}

}  // namespace notewick
