#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/records.h"

namespace notewick {

/// The rule of the name matcher in its plainest form, to compare with: two searches for each
/// participant, each hit checked for cluster boundaries. Valid UTF-8 only. Shares no code with the
/// product.
[[nodiscard]] std::vector<std::size_t> plainMatch(const std::string& text,
                                                  const std::vector<Participant>& participants);

}  // namespace notewick
