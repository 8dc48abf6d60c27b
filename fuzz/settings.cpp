// People write the settings file by hand. Whatever stands in it can be read, and what the program
// writes into it is read back exactly. The first line is the text to write, the rest is the file.
#include "client/uri.h"
#include "fuzz/targets.h"
#include "fuzz/temporary_folder.h"
#include "platform/linux/user_defaults.h"
#include "platform/web_address.h"

namespace notewick::fuzz {
namespace {

const std::string KEY = "VELKBaseURL";

/// `text` ends where its memory does, so that a reader that goes beyond it is caught.
void readAddress(std::string_view text) {
  const auto origin = uriOrigin(text);
  require(text.starts_with(origin), "the origin is the beginning");
  require(!isUriReference(text) || isUriReference(origin), "an address has a valid origin");
  require(!isLoopbackAddress(text) || isWebAddress(text), "this machine has a web address");
  require(!isLoopbackAddress(text) || isSecureAddress(text), "this machine is secure");
  if (isUriReference(text)) {
    for (const char letter : text) require(letter > ' ' && letter < '\x7f', "an address is ASCII");
  }
}

void readPlainly(std::string_view file) {
  const auto setting = plainSetting({file.data(), static_cast<qsizetype>(file.size())},
                                    QByteArray::fromStdString(KEY));
  if (!setting) return;
  require(setting->trimmed() == *setting, "blanks around a setting do not belong to it");
  require(!setting->contains('\n'), "a setting is one line");
}

void writeAndReadBack(const std::string& text) {
  SettingsUserDefaults defaults;
  const auto isText = defaults.string(KEY).has_value();
  require(!isText || !defaults.boolean(KEY), "a setting has one type");
  defaults.setString(KEY, text);
  const bool isWord = text == "true" || text == "false";
  require(isWord || defaults.string(KEY) == text, "a text is read back as it was written");
  defaults.setBoolean(KEY, isText);
  require(defaults.boolean(KEY) == isText, "a Boolean is read back as it was written");
  defaults.remove(KEY);
  require(!defaults.string(KEY) && !defaults.boolean(KEY), "a removed setting is gone");
}

}  // namespace

void settings(std::string_view bytes) {
  static const TemporaryFolder folder;
  static int number = 0;
  const auto end = std::min(bytes.find('\n'), bytes.size());
  const auto file = bytes.substr(std::min(end + 1, bytes.size()));
  readAddress(file);
  readPlainly(file);
  // QSettings remembers files by their names and times.
  const auto home = std::to_string(++number % 64);
  folder.put(home + "/VELK/Notewick.ini", file);
  qputenv("XDG_CONFIG_DIRS", "/nowhere");  // where an administrator may have made the setting
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path() + "/" + home));
  writeAndReadBack(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(end)).toStdString());
}

}  // namespace notewick::fuzz
