#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "platform/user_defaults.h"

namespace notewick {

/// Qt's settings file, VELK/Notewick.ini in the user's configuration folder, which people
/// may edit by hand. It knows no types: exactly `true` and `false` are Booleans, all else is text.
///
/// A text written here is read back exactly. A text written by hand is what stands there
/// (plainSetting); in quotes it keeps its blanks, and a backslash starts an escape where the
/// file's form knows one. Two programs may write at once: each writes its own changes
/// into what it finds there, under a lock file, which is taken away when it is not given back
/// within two seconds. A failure to write is swallowed; the value may count while the program runs,
/// or not. Something that is no file, or is larger than 1 MiB, holds no settings and takes none.
///
/// `VELKBaseURL` alone may also stand in a file of the same name for all users of the machine, in
/// the folders of XDG_CONFIG_DIRS (without it /etc/xdg; freedesktop.org, XDG Base Directories). The
/// first one that has it counts where the user's own file does not have it.
/// That file is read only.
class SettingsUserDefaults : public UserDefaults {
 public:
  /// Leaves the file to its owner, as each write does.
  static void keepFilePrivate();

  [[nodiscard]] std::optional<std::string> string(const std::string& key) override;
  [[nodiscard]] std::optional<bool> boolean(const std::string& key) override;
  void setString(const std::string& key, const std::string& value) override;
  void setBoolean(const std::string& key, bool value) override;
  void remove(const std::string& key) override;
};

/// The user's own file.
[[nodiscard]] std::string settingsFile();

/// The text of a setting in a settings file (INI), as the person who wrote it sees it there.
/// QSettings itself ends an unquoted text at the first `;` without a word, takes it apart at each
/// `,`, and drops a `\` that begins no escape: an address would become another one.
///
/// Blanks around the text do not belong to it, nor does a comment: a `;` behind a blank and all
/// that follows. Absent where the file has no such key in its general section, and where the text
/// is in the file's own quotes or escapes, which QSettings reads as they are meant. Where a key
/// stands twice, the last one counts.
[[nodiscard]] std::optional<QString> plainSetting(const QByteArray& file, const QByteArray& key);

}  // namespace notewick
