#include "platform/linux/controls/masked_typing.h"

#include <QLineEdit>

namespace notewick {
namespace {

constexpr QChar BULLET(0x2022);

QAccessible::UpdateHandler unmasked = nullptr;

QString bullets(const QString& text) {
  return QString(text.size(), BULLET);
}

void tellMasked(QAccessibleEvent* event) {
  const auto instead = masked(*event);
  const auto own = QAccessible::installUpdateHandler(unmasked);
  QAccessible::updateAccessibility(instead ? instead.get() : event);
  QAccessible::installUpdateHandler(own);
}

}  // namespace

std::unique_ptr<QAccessibleEvent> masked(QAccessibleEvent& event) {
  auto* const field = qobject_cast<QLineEdit*>(event.object());
  if (field == nullptr || field->echoMode() == QLineEdit::Normal) return nullptr;
  if (event.type() == QAccessible::TextInserted) {
    const auto& typed = static_cast<QAccessibleTextInsertEvent&>(event);
    return std::make_unique<QAccessibleTextInsertEvent>(field, typed.changePosition(),
                                                        bullets(typed.textInserted()));
  }
  if (event.type() == QAccessible::TextRemoved) {
    const auto& gone = static_cast<QAccessibleTextRemoveEvent&>(event);
    return std::make_unique<QAccessibleTextRemoveEvent>(field, gone.changePosition(),
                                                        bullets(gone.textRemoved()));
  }
  if (event.type() == QAccessible::TextUpdated) {
    const auto& changed = static_cast<QAccessibleTextUpdateEvent&>(event);
    return std::make_unique<QAccessibleTextUpdateEvent>(field, changed.changePosition(),
                                                        bullets(changed.textRemoved()),
                                                        bullets(changed.textInserted()));
  }
  return nullptr;
}

void maskTyping() {
  const auto before = QAccessible::installUpdateHandler(tellMasked);
  if (before != tellMasked) unmasked = before;
}

}  // namespace notewick
