#pragma once

#include <optional>
#include <string>

namespace notewick {

/// The user's settings by key, read afresh at every call, so that a change made elsewhere counts at
/// once. Values have a type: asking for the wrong one is the same as asking for an absent key.
/// Main thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The text stored under `key`, possibly empty; absent when the key holds no text.
  [[nodiscard]] virtual std::optional<std::string> string(const std::string& key) = 0;

  /// The Boolean stored under `key`; absent when the key holds no Boolean.
  [[nodiscard]] virtual std::optional<bool> boolean(const std::string& key) = 0;

  virtual void setString(const std::string& key, const std::string& value) = 0;
  virtual void setBoolean(const std::string& key, bool value) = 0;

  /// Removes the key; an absent key is fine.
  virtual void remove(const std::string& key) = 0;
};

}  // namespace notewick
