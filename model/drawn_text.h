#pragma once

#include <string>
#include <string_view>

namespace notewick {

/// A text that somebody else wrote (a name, an error of the service), as a menu or a panel draws
/// it: on one line, and so that it reorders nothing but itself. Control characters and ends of
/// lines and paragraphs become blanks; marks that embed, override or isolate a direction
/// (Unicode Annex 9, 2.1 to 2.5) are left out. Ill-formed UTF-8 is repaired. Every other text stays
/// as it is.
///
/// For drawing only: what is stored, sent, logged and notified keeps its characters. Pure function,
/// any thread.
[[nodiscard]] std::string drawnText(std::string_view text);

/// The same for a text that stands within another: one that holds letters written from right to
/// left is isolated as a whole.
[[nodiscard]] std::string drawnWithin(std::string_view text);

/// Equal for drawn texts that nobody can tell apart on the screen, because they are canonically
/// equivalent, or differ in format characters only (soft hyphens, joiners, byte-order marks).
[[nodiscard]] std::string appearanceOf(std::string_view drawn);

}  // namespace notewick
