#pragma once

#include <string>

namespace notewick {

class UuidSource {
 public:
  virtual ~UuidSource() = default;

  /// A fresh random UUID (RFC 4122, version 4) in upper-case text, 36 characters.
  [[nodiscard]] virtual std::string next() = 0;
};

}  // namespace notewick
