#pragma once

#include "platform/uuid_source.h"

namespace notewick {

/// UUIDs from the system's random numbers.
class RandomUuidSource : public UuidSource {
 public:
  [[nodiscard]] std::string next() override;
};

}  // namespace notewick
