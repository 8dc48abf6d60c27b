#pragma once

#include "platform/uuid_source.h"

namespace notewick {

/// UUIDs from the system.
class CocoaUuidSource final : public UuidSource {
 public:
  [[nodiscard]] std::string next() override;
};

}  // namespace notewick
