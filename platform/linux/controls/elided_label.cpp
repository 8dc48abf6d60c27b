#include "platform/linux/controls/elided_label.h"

#include <QFontMetrics>
#include <QTextDocument>

namespace notewick {

ElidedLabel::ElidedLabel(const std::string& content, double size, Tint tint, int maximumWidth)
    : Label(content, size, tint) {
  const QString whole = text();
  setAccessibleName(whole);
  setMaximumWidth(maximumWidth);
  setText(QFontMetrics(font()).elidedText(whole, Qt::ElideRight, maximumWidth));
  if (text() != whole) setToolTip(Qt::convertFromPlainText(whole));
}

}  // namespace notewick
