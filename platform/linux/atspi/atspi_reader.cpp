#include "platform/linux/atspi/atspi_reader.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QList>
#include <QRegularExpression>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/linux/atspi/atspi_bus.h"

namespace notewick {

static QDBusArgument& operator<<(QDBusArgument& argument, const AtspiReference& reference) {
  argument.beginStructure();
  argument << reference.application << reference.path;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiReference& reference) {
  argument.beginStructure();
  argument >> reference.application >> reference.path;
  argument.endStructure();
  return argument;
}

namespace {

using std::chrono::milliseconds;

const QString ACCESSIBLE = QStringLiteral("org.a11y.atspi.Accessible");
const QString BUS_SERVICE = QStringLiteral("org.freedesktop.DBus");

/// Far more than a program has windows; a bound on what a broken one can cost.
constexpr qsizetype MAXIMUM_CHILDREN = 64;

/// The bit of ATSPI_STATE_ACTIVE in the first word of a state set.
constexpr unsigned int ACTIVE_STATE = 1U << 1;

const AtspiReference DESKTOP{QStringLiteral("org.a11y.atspi.Registry"),
                             QDBusObjectPath("/org/a11y/atspi/accessible/root")};

QDBusMessage call(const AtspiReference& object, const QString& interface, const QString& method) {
  auto message =
      QDBusMessage::createMethodCall(object.application, object.path.path(), interface, method);
  message.setAutoStartService(false);
  return message;
}

QDBusMessage childrenOf(const AtspiReference& object) {
  return call(object, ACCESSIBLE, QStringLiteral("GetChildren"));
}

QDBusMessage stateOf(const AtspiReference& object) {
  return call(object, ACCESSIBLE, QStringLiteral("GetState"));
}

QDBusMessage nameOf(const AtspiReference& object) {
  return call(object, DBUS_PROPERTIES, QStringLiteral("Get"))
         << ACCESSIBLE << QStringLiteral("Name");
}

QDBusMessage processOf(const AtspiReference& object) {
  auto message = QDBusMessage::createMethodCall(BUS_SERVICE, QStringLiteral("/"), BUS_SERVICE,
                                                QStringLiteral("GetConnectionUnixProcessID"));
  return message << object.application;
}

/// The first value of a reply; nothing when it is an error or has another type.
template <typename T>
T valueOf(const QDBusMessage& reply, const char* signature) {
  const bool fits =
      reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String(signature);
  return fits ? qdbus_cast<T>(reply.arguments().value(0)) : T();
}

/// Whether the bus can have given a connection this name. libdbus ends a process that addresses a
/// call to what is no bus name at all, and Qt lets some such texts pass.
bool isConnection(const QString& name) {
  static const QRegularExpression form(QStringLiteral(R"(\A:[\w-]+(\.[\w-]+)+\z)"));
  constexpr qsizetype LONGEST_NAME = 255;
  return name.size() <= LONGEST_NAME && form.match(name).hasMatch();
}

/// Programs write the names in their answers as they like.
QList<AtspiReference> references(const QDBusMessage& reply) {
  auto found = valueOf<QList<AtspiReference>>(reply, "a(so)").mid(0, MAXIMUM_CHILDREN);
  found.removeIf([](const auto& reference) { return !isConnection(reference.application); });
  return found;
}

/// An empty message where nothing was asked.
QDBusMessage answerTo(std::optional<QDBusPendingCall>& call) {
  if (!call) return {};
  call->waitForFinished();
  return call->reply();
}

template <typename Question>
std::vector<QDBusMessage> questions(const std::vector<AtspiReference>& objects, Question question) {
  std::vector<QDBusMessage> messages;
  std::ranges::transform(objects, std::back_inserter(messages), question);
  return messages;
}

}  // namespace

AtspiReader::AtspiReader() {
  qDBusRegisterMetaType<AtspiReference>();
  qDBusRegisterMetaType<QList<AtspiReference>>();
}

std::vector<AtspiReference> AtspiReader::applications(const QDBusConnection& bus,
                                                      const Deadline& deadline) {
  const auto children =
      references(ask(bus, {childrenOf(DESKTOP)}, deadline.remaining() / 2).front());
  const std::vector<AtspiReference> all(children.begin(), children.end());
  const auto processes = ask(bus, questions(all, processOf), deadline.remaining() / 2);
  const auto own = static_cast<unsigned int>(getpid());
  std::vector<AtspiReference> others;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (valueOf<unsigned int>(processes[i], "u") != own) others.push_back(all[i]);
  }
  return others;
}

std::vector<AtspiReader::Window> AtspiReader::windows(
    const QDBusConnection& bus, const std::vector<AtspiReference>& applications,
    const Deadline& deadline) {
  std::vector<AtspiReference> found;
  for (const auto& reply :
       ask(bus, questions(applications, childrenOf), deadline.remaining() / 2)) {
    for (const auto& window : references(reply)) found.push_back(window);
  }
  const auto states = ask(bus, questions(found, stateOf), deadline.remaining() / 2);
  std::vector<Window> windows;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const auto words = valueOf<QList<unsigned int>>(states[i], "au");
    windows.push_back({found[i], !words.isEmpty() && (words.front() & ACTIVE_STATE) != 0});
  }
  return windows;
}

std::vector<std::optional<QString>> AtspiReader::names(const QDBusConnection& bus,
                                                       const std::vector<AtspiReference>& objects,
                                                       const Deadline& deadline) {
  std::vector<std::optional<QString>> names;
  for (const auto& reply : ask(bus, questions(objects, nameOf), deadline.remaining())) {
    const auto value = valueOf<QDBusVariant>(reply, "v").variant();
    const bool isText = value.typeId() == QMetaType::QString;
    names.push_back(isText ? std::optional(value.toString()) : std::nullopt);
  }
  return names;
}

std::vector<QDBusMessage> AtspiReader::ask(const QDBusConnection& bus,
                                           const std::vector<QDBusMessage>& questions,
                                           milliseconds limit) {
  std::vector<std::optional<QDBusPendingCall>> calls;
  for (const auto& question : questions) calls.push_back(send(bus, question, limit));
  std::vector<QDBusMessage> replies;
  std::ranges::transform(calls, std::back_inserter(replies), answerTo);
  for (std::size_t i = 0; i < replies.size(); ++i) {
    if (ranOver(replies[i])) waitForSignOfLife(bus, questions[i].service());
  }
  return replies;
}

std::optional<QDBusPendingCall> AtspiReader::send(const QDBusConnection& bus,
                                                  const QDBusMessage& question,
                                                  milliseconds limit) const {
  if (limit <= milliseconds::zero() || isSilent(question.service())) return std::nullopt;
  return bus.asyncCall(question, static_cast<int>(limit.count()));
}

void AtspiReader::waitForSignOfLife(const QDBusConnection& bus, const QString& application) {
  if (silent_.contains(application)) return;
  silent_.insert(application);
  const AtspiReference root{application, DESKTOP.path};
  const auto anyAnswer = bus.asyncCall(stateOf(root), std::numeric_limits<int>::max());
  auto* watcher = new QDBusPendingCallWatcher(anyAnswer, this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, application] {
    watcher->deleteLater();
    silent_.remove(application);
  });
}

}  // namespace notewick
