#include "platform/linux/user_defaults.h"

#include <QFile>
#include <QSettings>
#include <QStringList>

namespace notewick {
namespace {

// Opening the settings reads the file again when it changed; closing them writes what was set.
class OpenSettings : public QSettings {
 public:
  OpenSettings() : QSettings(IniFormat, UserScope, "VELK", "Notewick") {
    setFallbacksEnabled(false);
  }

  [[nodiscard]] std::optional<QString> text(const std::string& key) const {
    const QString name = QString::fromStdString(key);
    if (!contains(name)) return std::nullopt;
    // An unquoted text with commas in it arrives as a list of what stands between them.
    return value(name).toStringList().join(',');
  }

  // The file names the user, and the toolkit would let everyone read it.
  void write(const std::string& key, const QString& text) {
    setValue(QString::fromStdString(key), text);
    sync();
    QFile::setPermissions(fileName(), QFile::ReadOwner | QFile::WriteOwner);
  }
};

const QString yes = QStringLiteral("true");
const QString no = QStringLiteral("false");

}  // namespace

std::optional<std::string> SettingsUserDefaults::string(const std::string& key) {
  const auto text = OpenSettings().text(key);
  if (!text || *text == yes || *text == no) return std::nullopt;
  return text->toStdString();
}

std::optional<bool> SettingsUserDefaults::boolean(const std::string& key) {
  const auto text = OpenSettings().text(key);
  if (text == yes) return true;
  if (text == no) return false;
  return std::nullopt;
}

void SettingsUserDefaults::setString(const std::string& key, const std::string& value) {
  OpenSettings().write(key, QString::fromStdString(value));
}

void SettingsUserDefaults::setBoolean(const std::string& key, bool value) {
  OpenSettings().write(key, value ? yes : no);
}

void SettingsUserDefaults::remove(const std::string& key) {
  OpenSettings().remove(QString::fromStdString(key));
}

}  // namespace notewick
