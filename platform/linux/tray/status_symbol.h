#pragma once

#include <QIcon>
#include <QString>
#include <cstddef>
#include <map>

namespace notewick {

/// What the symbol shows of a count: nothing of 0, its digit up to 9, then "9+".
[[nodiscard]] QString badgeOf(std::size_t count);

/// The program's symbol: a note with this badge, or with a plus where the badge is empty. White
/// paper with dark ink, so that it is seen on light and on dark panels. Drawn for each usual size
/// of a panel on its own pixel grid.
[[nodiscard]] QIcon statusSymbol(const QString& badge = {});

/// The symbols by their badges, each drawn once: Qt keeps the pictures of every icon that it has
/// shown, until ten megabytes are full of them.
class StatusSymbols {
 public:
  [[nodiscard]] const QIcon& with(const QString& badge);

 private:
  std::map<QString, QIcon> drawn_;
};

}  // namespace notewick
