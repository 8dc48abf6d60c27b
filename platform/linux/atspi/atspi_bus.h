#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "platform/linux/titles/deadline.h"

namespace notewick {

/// The interface through which D-Bus objects tell their properties.
inline const QString DBUS_PROPERTIES = QStringLiteral("org.freedesktop.DBus.Properties");

/// Whether this stands for an answer that did not come in time.
[[nodiscard]] bool ranOver(const QDBusMessage& reply);

/// The AT-SPI bus, on which programs describe their windows to assistive programs, and the
/// desktop's setting that makes programs join it. Main thread.
class AtspiBus final : public QObject {
  Q_OBJECT

 public:
  enum class Setting {
    unknown,  ///< the desktop has not answered yet
    missing,  ///< this session has no AT-SPI service
    off,
    on,
  };

  /// Asks the session for the setting and, if it is on, joins the bus. Waits a quarter of a second
  /// at most; what takes longer arrives later.
  AtspiBus();
  ~AtspiBus() override;

  [[nodiscard]] Setting setting() const { return setting_; }

  /// Turns the desktop's setting on. It stays on after this program has ended, and reaches most
  /// programs only when they are started the next time.
  void turnOn();

  /// The bus itself; absent while the setting is not on or the bus cannot be reached. One that was
  /// lost is looked for again, without waiting.
  [[nodiscard]] std::optional<QDBusConnection> connection();

  /// Makes `renamed` tell of this application and of no other: each name that changes in a program
  /// costs a message.
  void follow(const QString& application);

 signals:
  void settingChanged();

  /// A window of the application with this bus name has become the active one.
  void windowActivated(const QString& application);

  /// A part of the application, which need not be a window, has another name now.
  void renamed(const QString& application, const QString& path, const QString& name);

 private slots:
  void onPropertiesChanged(const QString& interface, const QVariantMap& changed);
  void onWindowActivated(const QDBusMessage& event);
  void onPropertyChange(const QDBusMessage& event);

 private:
  using Answer = std::function<void(const QDBusMessage&)>;

  void ask(const QDBusMessage& question, Answer answer);
  void readSetting();
  void apply(Setting setting);
  [[nodiscard]] bool isConnected() const;
  void join();
  void joinAt(const QString& address);
  void leave();
  void registerEvents();
  void changeEvents(const char* method, const QString& event, const QString& application);

  QDBusConnection session_;
  QDBusServiceWatcher sessionWatcher_;
  QDBusServiceWatcher registryWatcher_;
  std::optional<Deadline> startLimit_;
  Setting setting_ = Setting::unknown;
  bool isJoining_ = false;
  bool hasJoined_ = false;
  QString followed_;
};

}  // namespace notewick
