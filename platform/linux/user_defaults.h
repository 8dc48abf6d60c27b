#pragma once

#include "platform/user_defaults.h"

namespace notewick {

/// The toolkit's settings file, VELK/Notewick.ini in the user's configuration folder, which people
/// may edit by hand. It knows no types: exactly `true` and `false` are Booleans, all else is text.
///
/// A text written here is read back exactly. A text written by hand is what stands there
/// (plain_setting.h); in quotes it keeps its blanks, and a backslash starts an escape where the
/// file's form knows one. Two programs may write at once: each writes its own changes
/// into what it finds there, under a lock file, which is taken away when it is not given back
/// within two seconds. A failure to write is swallowed; the value may count while the program runs,
/// or not. Something that is no file, or is larger than 1 MiB, holds no settings and takes none.
class SettingsUserDefaults : public UserDefaults {
 public:
  [[nodiscard]] std::optional<std::string> string(const std::string& key) override;
  [[nodiscard]] std::optional<bool> boolean(const std::string& key) override;
  void setString(const std::string& key, const std::string& value) override;
  void setBoolean(const std::string& key, bool value) override;
  void remove(const std::string& key) override;
};

}  // namespace notewick
