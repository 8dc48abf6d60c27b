#include "platform/linux/session/notification_server.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <chrono>
#include <utility>

namespace notewick {
namespace {

using namespace std::chrono_literals;

const QString SERVER = QStringLiteral("org.freedesktop.Notifications");
const QString SERVER_PATH = QStringLiteral("/org/freedesktop/Notifications");
const QString OWN_NAME = QStringLiteral("tools.velk.notewick");
const QString CLICK = QStringLiteral("default");

constexpr std::chrono::milliseconds PATIENCE = 2s;
/// Servers keep notifications that nobody has clicked, and do not all tell when they forget one.
constexpr std::size_t MOST_REMEMBERED = 100;

QDBusMessage callOf(const char* method) {
  return QDBusMessage::createMethodCall(SERVER, SERVER_PATH, SERVER, method);
}

QVariantMap hints() {
  constexpr uchar NORMAL_URGENCY = 1;
  return {{"category", "x-velk.casework"},
          {"desktop-entry", OWN_NAME},
          {"sound-name", "message-new-instant"},
          {"urgency", QVariant::fromValue(NORMAL_URGENCY)}};
}

QDBusMessage notifyCall(const NotificationRequest& request, bool hasAction) {
  constexpr uint NOTHING_TO_REPLACE = 0;
  constexpr int SERVER_DECIDES_HOW_LONG = -1;
  QDBusMessage call = callOf("Notify");
  call << "VELK Notewick" << NOTHING_TO_REPLACE << OWN_NAME << request.summary << request.body
       << (hasAction ? QStringList{CLICK, "Open"} : QStringList()) << hints()
       << SERVER_DECIDES_HOW_LONG;
  return call;
}

}  // namespace

NotificationServer::NotificationServer() {
  if (QDBusConnection::sessionBus().isConnected()) listen();
}

void NotificationServer::listen() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  watcher_.setConnection(bus);
  watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
  watcher_.addWatchedService(SERVER);
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString&, const QString& owner) { serverChanged(owner); });
  bus.connect(SERVER, SERVER_PATH, SERVER, "ActionInvoked", this,
              SLOT(onActionInvoked(uint, QString)));
}

void NotificationServer::show(NotificationRequest request) {
  if (takesActions_.has_value()) return send(request);
  waiting_.push_back(std::move(request));
  if (!question_) askForCapabilities();
}

void NotificationServer::onActionInvoked(uint id, const QString& action) {
  if (action != CLICK) return;
  const auto entry = clicked_.extract(id);
  if (!entry.empty()) entry.mapped()();
}

// A call that started the server is answered by it; asking again does no harm.
void NotificationServer::serverChanged(const QString& newOwner) {
  clicked_.clear();
  takesActions_.reset();
  if (question_ && !newOwner.isEmpty()) askForCapabilities();
}

void NotificationServer::askForCapabilities() {
  question_ = std::make_unique<QDBusPendingCallWatcher>(
      QDBusConnection::sessionBus().asyncCall(callOf("GetCapabilities"), PATIENCE.count()));
  connect(question_.get(), &QDBusPendingCallWatcher::finished, this,
          &NotificationServer::capabilitiesArrived);
}

void NotificationServer::capabilitiesArrived() {
  const QDBusPendingReply<QStringList> answer = *question_;
  question_.release()->deleteLater();
  if (answer.isValid()) takesActions_ = answer.value().contains("actions");
  for (const NotificationRequest& request : std::exchange(waiting_, {})) send(request);
}

void NotificationServer::send(const NotificationRequest& request) {
  const bool hasAction = request.clicked && takesActions_.value_or(false);
  const auto call = QDBusConnection::sessionBus().asyncCall(notifyCall(request, hasAction));
  if (!hasAction) return;
  auto* const shown = new QDBusPendingCallWatcher(call, this);
  connect(shown, &QDBusPendingCallWatcher::finished, this,
          [this, shown, clicked = request.clicked] {
            const QDBusPendingReply<uint> answer = *shown;
            shown->deleteLater();
            if (answer.isValid()) remember(answer.value(), clicked);
          });
}

void NotificationServer::remember(uint id, const std::function<void()>& clicked) {
  clicked_[id] = clicked;
  if (clicked_.size() > MOST_REMEMBERED) clicked_.erase(clicked_.begin());
}

}  // namespace notewick

#include "moc_notification_server.cpp"
