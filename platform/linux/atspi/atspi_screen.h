#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/atspi/atspi_bus.h"
#include "platform/linux/atspi/atspi_reader.h"
#include "platform/screen.h"

namespace notewick {

/// What is on screen where only the programs themselves tell it, over the AT-SPI bus. Knows only
/// programs that have joined the bus. The order of the windows is the program's own.
///
/// A sample goes through up to three steps and ends with the first that finds an active window:
/// 1. It asks the application whose window was activated last; the bus reports activations.
/// 2. It asks all others: that application may have lost the focus without a report.
/// 3. When the active application does not answer, its last answer stands for one sample; the
///    application's own events have kept that answer current (`rename`). From then on, until it
///    answers again or another is active, it is frontmost without titles: the user may long be in a
///    program that never joined the bus.
class AtspiScreen final : public QObject, public Screen {
 public:
  /// A sample takes `limit` at most.
  AtspiScreen(std::shared_ptr<AtspiBus> bus, std::chrono::milliseconds limit);

  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;

 private:
  struct Sighting {
    AtspiReference active;
    std::vector<AtspiReference> windows;  ///< those of the titles, in the same order
    FrontmostApplication frontmost;
    bool isAnswer = true;  ///< the application itself gave it to this sample
  };

  /// The three steps of a sample.
  [[nodiscard]] std::optional<Sighting> look(const QDBusConnection& bus, std::size_t mostWindows,
                                             const Deadline& deadline);
  /// Finds the active window among those of the applications, and reads its program's titles.
  /// Absent when none is active, or when that program does not answer.
  [[nodiscard]] std::optional<Sighting> lookAt(const QDBusConnection& bus,
                                               const std::vector<AtspiReference>& applications,
                                               std::size_t mostWindows, const Deadline& deadline);
  /// Reads the names of the application, of its active window and of its first windows, all at
  /// once.
  [[nodiscard]] std::optional<Sighting> read(const QDBusConnection& bus,
                                             const AtspiReference& active,
                                             std::vector<AtspiReference> windows,
                                             const Deadline& deadline);
  /// The third step: what counts when nobody has answered.
  [[nodiscard]] std::optional<Sighting> withoutAnswer();
  /// Corrects the last sighting when one of its objects has another name.
  void rename(const QString& application, const QString& path, const QString& name);

  std::shared_ptr<AtspiBus> bus_;
  std::chrono::milliseconds limit_;
  AtspiReader reader_;
  QString activated_;             ///< the application whose window became active last, if known
  std::optional<Sighting> last_;  ///< what the last sample found
};

}  // namespace notewick
