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

/// What is on screen where only the programs themselves tell: through the accessibility bus. Knows
/// only programs that have joined it. A sample asks the application whose window was activated
/// last, and only if that is not active any more all others. When the active application does not
/// answer, its last answer, kept current by its events, stands for one sample. From then on, until
/// it answers again or another is active, it is frontmost without titles: the user may long be in a
/// program that never joined the bus.
/// The order of the windows is the program's own.
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

  [[nodiscard]] std::optional<Sighting> look(const QDBusConnection& bus, std::size_t mostWindows,
                                             const Deadline& deadline);
  [[nodiscard]] std::optional<Sighting> lookAt(const QDBusConnection& bus,
                                               const std::vector<AtspiReference>& applications,
                                               std::size_t mostWindows, const Deadline& deadline);
  [[nodiscard]] std::optional<Sighting> read(const QDBusConnection& bus,
                                             const AtspiReference& active,
                                             std::vector<AtspiReference> windows,
                                             const Deadline& deadline);
  /// What counts when nobody has answered.
  [[nodiscard]] std::optional<Sighting> withoutAnswer();
  void rename(const QString& application, const QString& path, const QString& name);

  std::shared_ptr<AtspiBus> bus_;
  std::chrono::milliseconds limit_;
  AtspiReader reader_;
  QString activated_;             ///< the application whose window became active last, if known
  std::optional<Sighting> last_;  ///< what the last sample found
};

}  // namespace notewick
