#include "platform/macos/status_item.h"

#include <utility>

#include "platform/macos/bridge/text.h"

namespace notewick {

CocoaStatusItem::CocoaStatusItem(const StatusItemAppearance& appearance,
                                 std::weak_ptr<StatusItemTarget> target)
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]),
      target_([[NWMenuTarget alloc] initWithTarget:std::move(target)]) {
  NSStatusBarButton* button = item_.button;
  button.image = [NSImage imageWithSystemSymbolName:nsString(appearance.symbolName)
                           accessibilityDescription:nsString(appearance.accessibilityDescription)];
  button.imagePosition = NSImageLeading;
  button.title = nsString(appearance.title);
}

CocoaStatusItem::~CocoaStatusItem() { [NSStatusBar.systemStatusBar removeStatusItem:item_]; }

void CocoaStatusItem::setTitle(const std::string& title, std::size_t /*count*/) {
  item_.button.title = nsString(title);
}

void CocoaStatusItem::setMenu(const Menu& menu) { item_.menu = renderedMenu(menu, target_); }

}  // namespace notewick
