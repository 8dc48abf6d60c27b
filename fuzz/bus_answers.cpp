// A program on the accessibility bus, and whatever calls itself the secret service, answers each
// question with values of any types. The values are made from the bytes and travel over a real
// connection, so that they are read as on the bus.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

#include "fuzz/targets.h"
#include "platform/linux/atspi/atspi_reader.h"
#include "platform/linux/secrets/secret_bus.h"

namespace notewick::fuzz {
namespace {

using namespace std::chrono_literals;

/// Makes values until the bytes are used up.
class Values {
 public:
  explicit Values(std::string_view bytes) : rest_(bytes) {}

  QVariantList answer() {
    QVariantList values;
    for (int count = next() % 4; count > 0; --count) values.append(value(0));
    return values;
  }

  [[nodiscard]] bool isError() { return next() % 16 == 15; }

 private:
  static constexpr int DEEPEST = 3;

  int next() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  QByteArray bytes() {
    const auto size = std::min<std::size_t>(static_cast<std::size_t>(next()) % 32, rest_.size());
    const QByteArray taken(rest_.data(), static_cast<qsizetype>(size));
    rest_.remove_prefix(size);
    return taken;
  }

  /// Of a program, or of none.
  QString name() { return next() % 2 == 0 ? ":1." + QString::number(next()) : text(); }
  QDBusObjectPath path() { return QDBusObjectPath("/o" + QString::number(next())); }
  QString text() { return QString::fromLatin1(bytes()); }

  QVariant value(int depth) {
    switch (next() % (depth < DEEPEST ? 12 : 6)) {
      case 0:
        return text();
      case 1:
        return QVariant::fromValue(path());
      case 2:
        return static_cast<uint>(next());
      case 3:
        return next() % 2 == 0;
      case 4:
        return bytes();
      case 5:
        return QStringList{text(), text()};
      case 6:
        return QVariant::fromValue(QDBusVariant(value(depth + 1)));
      case 7:
        return QVariant::fromValue(QList<QDBusObjectPath>{path(), path()});
      case 8:
        return QVariant::fromValue(QList<uint>{static_cast<uint>(next()), 2});
      case 9:
        return QVariant::fromValue(QList<AtspiReference>{{name(), path()}, {name(), path()}});
      case 10:
        return QVariant::fromValue(SecretOnBus{path(), bytes(), bytes(), text()});
      default:
        return QVariantMap{{text(), value(depth + 1)}};
    }
  }

  std::string_view rest_;
};

/// The other end: answers every question, on a thread of its own, from the values of the moment.
class Stranger : public QDBusVirtualObject {
 public:
  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (values->isError()) return connection.send(message.createErrorReply("e.E", "no"));
    return connection.send(message.createReply(values->answer()));
  }

  Values* values = nullptr;
};

QDBusMessage question() {
  return QDBusMessage::createMethodCall("a.b", "/x", "a.b", "c");
}

/// Both ends of the connection, made once.
class Line {
 public:
  Line() {
    qDBusRegisterMetaType<QList<uint>>();
    registerSecretTypes();
    thread_.start();
    QObject::connect(&server_, &QDBusServer::newConnection, [this](QDBusConnection connection) {
      connection.registerVirtualObject("/", &stranger_, QDBusConnection::SubPath);
      stranger_.moveToThread(&thread_);
    });
    require(QDBusConnection::connectToPeer(server_.address(), "ours").isConnected(),
            "there is a connection");
    waitForTheFirstAnswer();
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  [[nodiscard]] static QDBusConnection ours() { return QDBusConnection("ours"); }
  void answersWith(Values& values) { stranger_.values = &values; }

 private:
  /// Qt holds all questions back until the server's thread, this one, has had a turn of its event
  /// loop after `newConnection`.
  void waitForTheFirstAnswer() {
    Values nothing("");
    answersWith(nothing);
    const QDBusPendingCallWatcher answer(ours().asyncCall(question()));
    while (!answer.isFinished()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    require(!answer.isError(), "the other end answers");
  }

  static inline int argc_ = 1;
  static inline char name_[] = "fuzz";
  static inline char* argv_[] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  QThread thread_;
  Stranger stranger_;
  QDBusServer server_{"unix:tmpdir=/tmp"};
};

void readScreen(const QDBusConnection& bus) {
  constexpr std::size_t MOST = 64;
  AtspiReader reader;
  const auto applications = reader.applications(bus, Deadline(5s));
  require(applications.size() <= MOST, "a desktop has a bounded number of programs");
  const std::vector<AtspiReference> two(2, {"a.b", QDBusObjectPath("/x")});
  const auto windows = reader.windows(bus, two, Deadline(5s));
  require(windows.size() <= 2 * MOST, "a program has a bounded number of windows");
  require(reader.names(bus, two, Deadline(5s)).size() == 2, "each object has a name or none");
}

void readSecrets(const QDBusConnection& bus) {
  const auto answer = bus.call(question(), QDBus::Block, 5000).arguments();
  (void)itemsIn(answer);
  (void)secretIn(answer);
}

}  // namespace

void bus_answers(std::string_view bytes) {
  static auto& line = *new Line;  // as long as the process
  Values values(bytes);
  line.answersWith(values);
  readScreen(Line::ours());
  readSecrets(Line::ours());
}

}  // namespace notewick::fuzz
