#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "platform/uuid_source.h"

namespace notewick {

/// UUIDs that count: 00000000-0000-4000-8000-000000000001, then ...2, upper case.
class FakeUuidSource : public UuidSource {
 public:
  [[nodiscard]] std::string next() override { return nth(++count_); }

  /// The id that the `number`th call gives, counted from 1.
  [[nodiscard]] static std::string nth(std::uint64_t number) {
    char digits[13];
    std::snprintf(digits, sizeof digits, "%012llX",
                  static_cast<unsigned long long>(number & 0xFFFFFFFFFFFF));
    return std::string("00000000-0000-4000-8000-") + digits;
  }

 private:
  std::uint64_t count_ = 0;
};

}  // namespace notewick
