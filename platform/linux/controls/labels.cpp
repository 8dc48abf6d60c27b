#include "platform/linux/controls/labels.h"

#include <QEvent>
#include <QFontMetrics>
#include <QTextDocument>
#include <algorithm>

#include "platform/linux/controls/screen_reader_role.h"

namespace notewick {
namespace {

constexpr QChar WORD_JOINER(0x2060);

}  // namespace

Label::Label(const std::string& content, double size, Tint tint, QFont::Weight weight)
    : QLabel(fromUtf8(content)), tint_(tint) {
  setTextFormat(Qt::PlainText);
  setFont(panelFont(size, weight));
  colour();
}

void Label::wrapAt(double width) {
  wrapWithin(points(width));
}

void Label::wrapWithin(int pixels) {
  setWordWrap(true);
  setFixedWidth(pixels);
  fitHeight();
}

void Label::display(const std::string& content) {
  if (!wordWrap()) return setText(fromUtf8(content));
  setText(fromUtf8(content).replace(QLatin1String("://"), QString("://") + WORD_JOINER));
  fitHeight();
}

void Label::fitHeight() {
  setMinimumHeight(0);
  setMaximumHeight(QWIDGETSIZE_MAX);
  setFixedHeight(std::max(0, heightForWidth(maximumWidth())));
}

void Label::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ParentChange) colour();
}

void Label::colour() {
  QPalette own = palette();
  const QColor wanted = tinted(window()->palette(), tint_);
  if (own.color(QPalette::WindowText) == wanted) return;
  own = QPalette();
  own.setColor(QPalette::WindowText, wanted);
  setPalette(own);
}

AnnouncingLabel::AnnouncingLabel(double size, Tint tint) : Label("", size, tint) {
  setScreenReaderRole(*this, QAccessible::Notification);
  hide();
}

void AnnouncingLabel::announce(const std::string& content) {
  const QString wanted = fromUtf8(content);
  if (wanted == accessibleName()) return;
  hide();
  display(content);
  setAccessibleName(wanted);
  setVisible(!content.empty());
  QAccessibleEvent alert(this, QAccessible::Alert);
  if (!content.empty()) QAccessible::updateAccessibility(&alert);
}

ElidedLabel::ElidedLabel(const std::string& content, double size, Tint tint, int maximumWidth)
    : Label(content, size, tint) {
  const QString whole = text();
  setAccessibleName(whole);
  setMaximumWidth(maximumWidth);
  setText(QFontMetrics(font()).elidedText(whole, Qt::ElideRight, maximumWidth));
  if (text() != whole) setToolTip(Qt::convertFromPlainText(whole));
}

}  // namespace notewick
