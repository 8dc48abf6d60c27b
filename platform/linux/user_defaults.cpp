#include "platform/linux/user_defaults.h"

#include <QFileInfo>
#include <QLockFile>
#include <QSettings>
#include <QStringList>
#include <chrono>

#include "platform/linux/plain_setting.h"
#include "platform/linux/workspace.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

constexpr qint64 largestFile = 1024 * 1024;
/// A program that writes settings holds their lock for some milliseconds.
constexpr auto patienceWithALock = 2s;

QString settingsFile() {
  return QString::fromStdString(DesktopWorkspace().configurationFolder() + "/VELK/Notewick.ini");
}

// The toolkit would wait for the other end of a pipe, and read a file of any size.
bool isUsable(const QString& path) {
  const QFileInfo file(path);
  return !file.exists() || (file.isFile() && file.size() <= largestFile);
}

// The toolkit would wait for ever for a lock that a program of another machine left behind.
void removeDeadLock(const QString& path) {
  const QString name = path + ".lock";
  QLockFile lock(name);
  if (!lock.tryLock(patienceWithALock) && lock.error() == QLockFile::LockFailedError) {
    QFile::remove(name);
  }
}

// Opening the settings reads the file again when it changed; closing them writes what was set.
class OpenSettings : public QSettings {
 public:
  explicit OpenSettings(const QString& file) : QSettings(file, IniFormat) {}

  [[nodiscard]] std::optional<QString> text(const std::string& key) const {
    const QString name = QString::fromStdString(key);
    if (!contains(name)) return std::nullopt;
    QFile file(fileName());
    if (file.open(QFile::ReadOnly)) {
      if (auto plain = plainSetting(file.readAll(), QByteArray::fromStdString(key))) return plain;
    }
    // Several quoted texts with commas between them arrive as a list.
    return value(name).toStringList().join(',');
  }

  // The file names the user, and the toolkit would let everyone read it.
  void write(const std::string& key, const QString& text) {
    setValue(QString::fromStdString(key), text);
    sync();
    QFile::setPermissions(fileName(), QFile::ReadOwner | QFile::WriteOwner);
  }
};

std::optional<QString> read(const std::string& key) {
  const QString file = settingsFile();
  return isUsable(file) ? OpenSettings(file).text(key) : std::nullopt;
}

template <typename Change>
void change(const Change& makeChange) {
  const QString file = settingsFile();
  if (!isUsable(file)) return;
  removeDeadLock(file);
  OpenSettings settings(file);
  makeChange(settings);
}

const QString yes = QStringLiteral("true");
const QString no = QStringLiteral("false");

}  // namespace

std::optional<std::string> SettingsUserDefaults::string(const std::string& key) {
  const auto text = read(key);
  if (!text || *text == yes || *text == no) return std::nullopt;
  return text->toStdString();
}

std::optional<bool> SettingsUserDefaults::boolean(const std::string& key) {
  const auto text = read(key);
  if (text == yes) return true;
  if (text == no) return false;
  return std::nullopt;
}

void SettingsUserDefaults::setString(const std::string& key, const std::string& value) {
  change([&](auto& settings) { settings.write(key, QString::fromStdString(value)); });
}

void SettingsUserDefaults::setBoolean(const std::string& key, bool value) {
  change([&](auto& settings) { settings.write(key, value ? yes : no); });
}

void SettingsUserDefaults::remove(const std::string& key) {
  change([&](auto& settings) { settings.remove(QString::fromStdString(key)); });
}

}  // namespace notewick
