#pragma once

#include <QIcon>
#include <optional>
#include <string>

namespace notewick {

/// The program's symbol: a note with a plus, or with a count. White paper with dark ink, so that it
/// is seen on light and on dark panels. Drawn for each usual size of a panel on its own pixel grid.
[[nodiscard]] QIcon statusSymbol(std::optional<int> count);

/// The count that a status title ends with: 5 for " VELK (5)", none for " VELK".
[[nodiscard]] std::optional<int> countIn(const std::string& title);

}  // namespace notewick
