#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QSet>
#include <QString>
#include <chrono>
#include <optional>
#include <vector>

#include "platform/linux/titles/deadline.h"

namespace notewick {

/// An object on the AT-SPI bus: the bus name of its program and its path there.
struct AtspiReference {
  QString application;
  QDBusObjectPath path;
};

/// Asks programs about their windows. All questions of one kind are asked at once and answered in
/// whatever order; a program that has not answered in time is left out from then on until it does,
/// so that it costs its time once and not at every sample. Each round of questions but the last
/// takes half of the time that is left, so that programs that do not answer leave some for those
/// that do. References whose bus name no connection can have are left out. Main thread.
class AtspiReader final : public QObject {
 public:
  AtspiReader();

  /// The programs that have joined the bus, without this one, which cannot answer itself while it
  /// waits; empty when that cannot be read.
  [[nodiscard]] std::vector<AtspiReference> applications(const QDBusConnection& bus,
                                                         const Deadline& deadline);

  struct Window {
    AtspiReference reference;
    bool isActive = false;
  };

  /// The windows of those of the applications that answer, application by application.
  [[nodiscard]] std::vector<Window> windows(const QDBusConnection& bus,
                                            const std::vector<AtspiReference>& applications,
                                            const Deadline& deadline);

  /// The names of the objects; absent where it could not be read or is no text.
  [[nodiscard]] std::vector<std::optional<QString>> names(
      const QDBusConnection& bus, const std::vector<AtspiReference>& objects,
      const Deadline& deadline);

  [[nodiscard]] bool isSilent(const QString& application) const {
    return silent_.contains(application);
  }

 private:
  /// The replies in the order of the questions; an error, or an empty message, where there is none.
  [[nodiscard]] std::vector<QDBusMessage> ask(const QDBusConnection& bus,
                                              const std::vector<QDBusMessage>& questions,
                                              std::chrono::milliseconds limit);
  [[nodiscard]] std::optional<QDBusPendingCall> send(const QDBusConnection& bus,
                                                     const QDBusMessage& question,
                                                     std::chrono::milliseconds limit) const;
  /// Leaves the application out until it answers a question that has no time limit.
  void waitForSignOfLife(const QDBusConnection& bus, const QString& application);

  QSet<QString> silent_;
};

}  // namespace notewick

Q_DECLARE_METATYPE(notewick::AtspiReference)
