#include "platform/linux/elided_label.h"

#include <QFontMetrics>
#include <QTextDocument>

namespace notewick {

ElidedLabel::ElidedLabel(const std::string& content, double size, Tint tint, double maximumWidth)
    : Label(content, size, tint) {
  const QString whole = text();
  setAccessibleName(whole);
  setMaximumWidth(points(maximumWidth));
  setText(QFontMetrics(font()).elidedText(whole, Qt::ElideRight, points(maximumWidth)));
  if (text() != whole) setToolTip(Qt::convertFromPlainText(whole));
}

}  // namespace notewick
