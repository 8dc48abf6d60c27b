#pragma once

#include <map>
#include <string>
#include <variant>

#include "platform/user_defaults.h"

namespace notewick {

/// Settings with types, in memory; they survive a restart of the program. A test may put any value
/// under any key.
class FakeUserDefaults : public UserDefaults {
 public:
  using Value = std::variant<bool, std::string, double>;

  [[nodiscard]] std::optional<std::string> string(const std::string& key) override {
    return as<std::string>(key);
  }
  [[nodiscard]] std::optional<bool> boolean(const std::string& key) override {
    return as<bool>(key);
  }
  void setString(const std::string& key, const std::string& value) override { values[key] = value; }
  void setBoolean(const std::string& key, bool value) override { values[key] = value; }
  void remove(const std::string& key) override { values.erase(key); }

  std::map<std::string, Value> values;

 private:
  template <class T>
  [[nodiscard]] std::optional<T> as(const std::string& key) const {
    const auto entry = values.find(key);
    if (entry == values.end() || !std::holds_alternative<T>(entry->second)) return std::nullopt;
    return std::get<T>(entry->second);
  }
};

}  // namespace notewick
