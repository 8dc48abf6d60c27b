#include "platform/linux/views.h"

#include <QGuiApplication>

#include "platform/linux/quick_note_panel.h"
#include "platform/linux/sign_in_panel.h"
#include "platform/linux/tray/status_symbol.h"

namespace notewick {

std::unique_ptr<StatusItem> QtViews::makeStatusItem(const StatusItemAppearance& appearance,
                                                    std::weak_ptr<StatusItemTarget> target) {
  QGuiApplication::setWindowIcon(statusSymbol());
  auto item = std::make_unique<QtStatusItem>(appearance, std::move(target));
  statusItem_ = item.get();
  return item;
}

std::unique_ptr<QuickNotePanel> QtViews::makeQuickNotePanel(
    const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) {
  return std::make_unique<QtQuickNotePanel>(texts, std::move(delegate), userDefaults_, [this] {
    return statusItem_ ? statusItem_->windowMenu() : nullptr;
  });
}

std::unique_ptr<SignInPanel> QtViews::makeSignInPanel(const SignInTexts& texts,
                                                      std::weak_ptr<SignInPanelDelegate> delegate) {
  return std::make_unique<QtSignInPanel>(texts, std::move(delegate));
}

}  // namespace notewick
