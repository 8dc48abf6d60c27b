#include "platform/linux/plain_setting.h"

#include <QRegularExpression>

namespace notewick {
namespace {

bool beginsGeneralSection(const QByteArray& line) {
  const auto name = line.mid(1, line.indexOf(']') - 1).trimmed();
  return name.compare("General", Qt::CaseInsensitive) == 0;
}

/// What stands behind the equals sign; absent when the line sets another key or none.
std::optional<QByteArray> valueIn(const QByteArray& line, const QByteArray& key) {
  const auto end = line.indexOf('=');
  if (end < 0 || line.left(end).trimmed() != key) return std::nullopt;
  return line.mid(end + 1).trimmed();
}

std::optional<QByteArray> lastValue(const QByteArray& file, const QByteArray& key) {
  std::optional<QByteArray> last;
  bool inGeneral = true;
  for (const QByteArray& each : file.split('\n')) {
    const QByteArray line = each.trimmed();
    if (line.startsWith('[')) inGeneral = beginsGeneralSection(line);
    if (!inGeneral) continue;
    if (auto value = valueIn(line, key)) last = std::move(value);
  }
  return last;
}

/// Whether the text means something else than what stands there: it is quoted, holds one of the
/// escapes that QSettings writes, or is one of its values that are no plain texts.
bool isEncoded(const QString& text) {
  static const QRegularExpression encoded(
      QStringLiteral(R"(^"|^@@|^@String\(|\\[abfnrtv"'?\\x0-7])"));
  return encoded.match(text).hasMatch();
}

QString withoutComment(const QString& text) {
  static const QRegularExpression comment(QStringLiteral(R"((^|[ \t]);)"));
  const auto start = text.indexOf(comment);
  return start < 0 ? text : text.left(start).trimmed();
}

}  // namespace

std::optional<QString> plainSetting(const QByteArray& file, const QByteArray& key) {
  const auto value = lastValue(file, key);
  if (!value) return std::nullopt;
  const auto text = QString::fromUtf8(*value);
  if (isEncoded(text)) return std::nullopt;
  return withoutComment(text);
}

}  // namespace notewick
