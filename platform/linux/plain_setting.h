#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace notewick {

/// The text of a setting in a settings file (INI), as the person who wrote it sees it there.
/// QSettings itself ends an unquoted text at the first `;` without a word, takes it apart at each
/// `,`, and drops a `\` that begins no escape: an address would become another one.
///
/// Blanks around the text do not belong to it, nor does a comment: a `;` behind a blank and all
/// that follows. Absent where the file has no such key in its general section, and where the text
/// is in the file's own quotes or escapes, which QSettings reads as they are meant. Where a key
/// stands twice, the last one counts.
[[nodiscard]] std::optional<QString> plainSetting(const QByteArray& file, const QByteArray& key);

}  // namespace notewick
