#include "platform/linux/user_defaults.h"

#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <chrono>
#include <filesystem>

#include "platform/linux/workspace.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

bool beginsGeneralSection(const QByteArray& line) {
  const auto name = line.mid(1, line.indexOf(']') - 1).trimmed();
  return name.compare("General", Qt::CaseInsensitive) == 0;
}

/// What stands behind the equals sign; absent when the line sets another key or none.
std::optional<QByteArray> valueIn(const QByteArray& line, const QByteArray& key) {
  const auto end = line.indexOf('=');
  if (end < 0 || line.left(end).trimmed() != key) return std::nullopt;
  return line.mid(end + 1).trimmed();
}

std::optional<QByteArray> lastValue(const QByteArray& file, const QByteArray& key) {
  std::optional<QByteArray> last;
  bool inGeneral = true;
  for (const QByteArray& each : file.split('\n')) {
    const QByteArray line = each.trimmed();
    if (line.startsWith('[')) inGeneral = beginsGeneralSection(line);
    if (!inGeneral) continue;
    if (auto value = valueIn(line, key)) last = std::move(value);
  }
  return last;
}

/// Whether the text means something else than what stands there: it is quoted, holds one of the
/// escapes that QSettings writes, or is one of its values that are no plain texts.
bool isEncoded(const QString& text) {
  static const QRegularExpression encoded(
      QStringLiteral(R"(^"|^@@|^@String\(|\\[abfnrtv"'?\\x0-7])"));
  return encoded.match(text).hasMatch();
}

QString withoutComment(const QString& text) {
  static const QRegularExpression comment(QStringLiteral(R"((^|[ \t]);)"));
  const auto start = text.indexOf(comment);
  return start < 0 ? text : text.left(start).trimmed();
}

constexpr qint64 LARGEST_FILE = qint64{1024} * 1024;
/// A program that writes settings holds their lock for some milliseconds.
constexpr auto PATIENCE_WITH_A_LOCK = 2s;

/// The one setting that an administrator may make for all users.
constexpr const char* SYSTEM_WIDE_KEY = "VELKBaseURL";

const QString NAME_IN_FOLDER = QStringLiteral("/VELK/Notewick.ini");

QString ownFile() {
  return QString::fromStdString(DesktopWorkspace().configurationFolder()) + NAME_IN_FOLDER;
}

QStringList systemWideFiles() {
  QStringList paths = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  paths.removeFirst();  // the user's own
  for (QString& path : paths) path += NAME_IN_FOLDER;
  return paths;
}

// Qt would wait for the other end of a pipe, and read a file of any size.
bool isUsable(const QString& path) {
  const QFileInfo file(path);
  return !file.exists() || (file.isFile() && file.size() <= LARGEST_FILE);
}

bool isNoFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code failed;
  const auto type = fs::symlink_status(path, failed).type();
  return type != fs::file_type::not_found && type != fs::file_type::regular;
}

// Qt would wait for ever for a lock that a program of another machine left behind, and for what is
// no lock at all. False where it would still have to wait.
bool removeDeadLock(const QString& path) {
  const QString name = path + ".lock";
  std::error_code failed;
  if (isNoFile(name.toStdString())) std::filesystem::remove(name.toStdString(), failed);
  if (isNoFile(name.toStdString())) return false;
  QLockFile lock(name);
  if (!lock.tryLock(PATIENCE_WITH_A_LOCK) && lock.error() == QLockFile::LockFailedError) {
    QFile::remove(name);
  }
  return true;
}

// The file names the user, and Qt would let everyone read it.
void keepPrivate(const QString& file) {
  if (!isUsable(file)) return;
  const auto before = QFile::permissions(file);
  const auto owners =
      before & (QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
  if (before != owners) QFile::setPermissions(file, owners);
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

  void write(const std::string& key, const QString& text) {
    setValue(QString::fromStdString(key), text);
  }
};

std::optional<QString> read(const QString& file, const std::string& key) {
  return isUsable(file) ? OpenSettings(file).text(key) : std::nullopt;
}

std::optional<QString> read(const std::string& key) {
  if (auto text = read(ownFile(), key); text || key != SYSTEM_WIDE_KEY) return text;
  for (const QString& file : systemWideFiles()) {
    if (auto text = read(file, key)) return text;
  }
  return std::nullopt;
}

template <typename Change>
void change(const Change& makeChange) {
  const QString file = ownFile();
  if (!isUsable(file) || !removeDeadLock(file)) return;
  OpenSettings settings(file);
  makeChange(settings);
  settings.sync();
  keepPrivate(file);
}

const QString YES = QStringLiteral("true");
const QString NO = QStringLiteral("false");

}  // namespace

void SettingsUserDefaults::keepFilePrivate() {
  keepPrivate(ownFile());
}

std::optional<std::string> SettingsUserDefaults::string(const std::string& key) {
  const auto text = read(key);
  if (!text || *text == YES || *text == NO) return std::nullopt;
  return text->toStdString();
}

std::optional<bool> SettingsUserDefaults::boolean(const std::string& key) {
  const auto text = read(key);
  if (text == YES) return true;
  if (text == NO) return false;
  return std::nullopt;
}

void SettingsUserDefaults::setString(const std::string& key, const std::string& value) {
  change([&](auto& settings) { settings.write(key, QString::fromStdString(value)); });
}

void SettingsUserDefaults::setBoolean(const std::string& key, bool value) {
  change([&](auto& settings) { settings.write(key, value ? YES : NO); });
}

void SettingsUserDefaults::remove(const std::string& key) {
  change([&](auto& settings) { settings.remove(QString::fromStdString(key)); });
}

std::string settingsFile() {
  return ownFile().toStdString();
}

std::optional<QString> plainSetting(const QByteArray& file, const QByteArray& key) {
  const auto value = lastValue(file, key);
  if (!value) return std::nullopt;
  const auto text = QString::fromUtf8(*value);
  if (isEncoded(text)) return std::nullopt;
  return withoutComment(text);
}

}  // namespace notewick
