#include "platform/linux/atspi/atspi_bus.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace notewick {
namespace {

const QString LAUNCHER = QStringLiteral("org.a11y.Bus");
const QString LAUNCHER_PATH = QStringLiteral("/org/a11y/bus");
const QString STATUS_INTERFACE = QStringLiteral("org.a11y.Status");
const QString IS_ENABLED = QStringLiteral("IsEnabled");
const QString REGISTRY = QStringLiteral("org.a11y.atspi.Registry");
const QString REGISTRY_PATH = QStringLiteral("/org/a11y/atspi/registry");
const QString WINDOW_EVENTS = QStringLiteral("org.a11y.atspi.Event.Window");
const QString OBJECT_EVENTS = QStringLiteral("org.a11y.atspi.Event.Object");
const QString NAME_CHANGE = QStringLiteral("accessible-name");
const QString CONNECTION_NAME = QStringLiteral("notewick-accessibility");

QDBusMessage launcherCall(const QString& interface, const char* method,
                          const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(LAUNCHER, LAUNCHER_PATH, interface, method);
  message.setArguments(arguments);
  return message;
}

}  // namespace

bool ranOver(const QDBusMessage& reply) {
  const auto type = QDBusError(reply).type();
  return type == QDBusError::NoReply || type == QDBusError::Timeout || type == QDBusError::TimedOut;
}

AtspiBus::AtspiBus() : session_(QDBusConnection::sessionBus()), startLimit_(SAMPLE_LIMIT) {
  session_.connect(LAUNCHER, LAUNCHER_PATH, DBUS_PROPERTIES, QStringLiteral("PropertiesChanged"),
                   this, SLOT(onPropertiesChanged(QString, QVariantMap)));
  sessionWatcher_.setConnection(session_);
  sessionWatcher_.addWatchedService(LAUNCHER);
  connect(&sessionWatcher_, &QDBusServiceWatcher::serviceRegistered, this, &AtspiBus::readSetting);
  connect(&sessionWatcher_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this] { apply(Setting::missing); });
  connect(&registryWatcher_, &QDBusServiceWatcher::serviceRegistered, this,
          &AtspiBus::registerEvents);
  readSetting();
  startLimit_.reset();
}

AtspiBus::~AtspiBus() {
  leave();
}

void AtspiBus::ask(const QDBusMessage& question, Answer answer) {
  if (startLimit_ && !startLimit_->isOver()) {
    const auto reply =
        session_.call(question, QDBus::Block, static_cast<int>(startLimit_->remaining().count()));
    if (!ranOver(reply)) return answer(reply);
  }
  auto* call = new QDBusPendingCallWatcher(session_.asyncCall(question), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [call, answer = std::move(answer)] {
    call->deleteLater();
    answer(call->reply());
  });
}

void AtspiBus::readSetting() {
  ask(launcherCall(DBUS_PROPERTIES, "Get", {STATUS_INTERFACE, IS_ENABLED}),
      [this](const auto& reply) {
        const auto value = reply.arguments().value(0).template value<QDBusVariant>().variant();
        if (reply.type() != QDBusMessage::ReplyMessage) return apply(Setting::missing);
        apply(value.toBool() ? Setting::on : Setting::off);
      });
}

void AtspiBus::turnOn() {
  const auto on = QVariant::fromValue(QDBusVariant(true));
  ask(launcherCall(DBUS_PROPERTIES, "Set", {STATUS_INTERFACE, IS_ENABLED, on}),
      [this](const auto&) { readSetting(); });
}

void AtspiBus::onPropertiesChanged(const QString& interface, const QVariantMap& changed) {
  if (interface == STATUS_INTERFACE && changed.contains(IS_ENABLED)) readSetting();
}

void AtspiBus::apply(Setting setting) {
  if (setting_ != setting) {
    setting_ = setting;
    emit settingChanged();
  }
  if (setting == Setting::on) {
    join();
  } else {
    leave();
  }
}

void AtspiBus::join() {
  if (isConnected() || std::exchange(isJoining_, true)) return;
  leave();
  ask(launcherCall(LAUNCHER, "GetAddress", {}), [this](const auto& reply) {
    isJoining_ = false;
    const auto address = reply.arguments().value(0).toString();
    if (reply.type() == QDBusMessage::ReplyMessage && setting_ == Setting::on) joinAt(address);
  });
}

void AtspiBus::joinAt(const QString& address) {
  auto bus = QDBusConnection::connectToBus(address, CONNECTION_NAME);
  hasJoined_ = true;
  if (!bus.isConnected()) return;
  bus.connect(QString(), QString(), WINDOW_EVENTS, QStringLiteral("Activate"), this,
              SLOT(onWindowActivated(QDBusMessage)));
  registryWatcher_.setConnection(bus);
  registryWatcher_.addWatchedService(REGISTRY);
  registerEvents();
}

void AtspiBus::leave() {
  if (!std::exchange(hasJoined_, false)) return;
  followed_.clear();
  registryWatcher_.setWatchedServices({});
  QDBusConnection::disconnectFromBus(CONNECTION_NAME);
}

bool AtspiBus::isConnected() const {
  return hasJoined_ && QDBusConnection(CONNECTION_NAME).isConnected();
}

std::optional<QDBusConnection> AtspiBus::connection() {
  if (isConnected()) return QDBusConnection(CONNECTION_NAME);
  if (setting_ == Setting::on) join();
  return std::nullopt;
}

// Without a listener programs do not keep their states current: Chromium then shows the window that
// was active first as active for ever.
void AtspiBus::registerEvents() {
  changeEvents("RegisterEvent", QStringLiteral("window:activate"), QString());
  const auto application = std::exchange(followed_, QString());
  if (!application.isEmpty()) follow(application);
}

void AtspiBus::follow(const QString& application) {
  if (followed_ == application || !isConnected()) return;
  const auto event = QStringLiteral("object:property-change:accessible-name");
  QDBusConnection bus(CONNECTION_NAME);
  const auto change = QStringLiteral("PropertyChange");
  const auto slot = SLOT(onPropertyChange(QDBusMessage));
  if (!followed_.isEmpty()) {
    changeEvents("DeregisterEvent", event, QString());
    bus.disconnect(followed_, QString(), OBJECT_EVENTS, change, {NAME_CHANGE}, QString(), this,
                   slot);
  }
  changeEvents("RegisterEvent", event, application);
  bus.connect(application, QString(), OBJECT_EVENTS, change, {NAME_CHANGE}, QString(), this, slot);
  followed_ = application;
}

void AtspiBus::changeEvents(const char* method, const QString& event, const QString& application) {
  if (!isConnected()) return;
  auto call = QDBusMessage::createMethodCall(REGISTRY, REGISTRY_PATH, REGISTRY, method);
  call << event;
  if (QLatin1String(method) == QLatin1String("RegisterEvent")) call << QStringList() << application;
  QDBusConnection(CONNECTION_NAME).send(call);
}

void AtspiBus::onWindowActivated(const QDBusMessage& event) {
  emit windowActivated(event.service());
}

void AtspiBus::onPropertyChange(const QDBusMessage& event) {
  const auto name = event.arguments().value(3).value<QDBusVariant>().variant();
  if (name.typeId() == QMetaType::QString) {
    emit renamed(event.service(), event.path(), name.toString());
  }
}

}  // namespace notewick

#include "moc_atspi_bus.cpp"
