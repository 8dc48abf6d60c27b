#include "platform/macos/views.h"

#include <utility>

#include "platform/macos/quick_note_panel.h"
#include "platform/macos/sign_in_panel.h"
#include "platform/macos/status_item.h"

namespace notewick {

std::unique_ptr<StatusItem> CocoaViews::makeStatusItem(const StatusItemAppearance& appearance,
                                                       std::weak_ptr<StatusItemTarget> target) {
  return std::make_unique<CocoaStatusItem>(appearance, std::move(target));
}

std::unique_ptr<QuickNotePanel> CocoaViews::makeQuickNotePanel(
    const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) {
  return std::make_unique<CocoaQuickNotePanel>(texts, std::move(delegate));
}

std::unique_ptr<SignInPanel> CocoaViews::makeSignInPanel(
    const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) {
  return std::make_unique<CocoaSignInPanel>(texts, std::move(delegate));
}

}  // namespace notewick
