#pragma once

#import <Foundation/Foundation.h>

#include "platform/user_defaults.h"

namespace notewick {

/// Takes the command line out of the settings and gives `database` back. macOS reads "-key value"
/// there as a setting above all others, whereas the program knows one argument only, "--selftest".
/// AppKit's own arguments ("-NSOpen file") then do nothing either, and no other word is taken for a
/// document to open.
[[nodiscard]] NSUserDefaults* withoutArguments(NSUserDefaults* database);

/// The user defaults of the program's domain. Reads are typed: a number or a text is never taken
/// for a Boolean, nor the other way round, as the database's own conversions would.
class CocoaUserDefaults final : public UserDefaults {
 public:
  explicit CocoaUserDefaults(NSUserDefaults* database) : database_(database) {}

  [[nodiscard]] std::optional<std::string> string(const std::string& key) override;
  [[nodiscard]] std::optional<bool> boolean(const std::string& key) override;
  void setString(const std::string& key, const std::string& value) override;
  void setBoolean(const std::string& key, bool value) override;
  void remove(const std::string& key) override;

 private:
  NSUserDefaults* database_;
};

}  // namespace notewick
