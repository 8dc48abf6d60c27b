#include "platform/macos/tray/menu_renderer.h"

#include <utility>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

NSMenuItem* renderedItem(const MenuItem& item, NWMenuTarget* target) {
  if (item.separator) return NSMenuItem.separatorItem;
  NSMenuItem* native = [[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                  action:nil
                                           keyEquivalent:nsString(item.key)];
  if (item.representedObject) native.representedObject = nsString(*item.representedObject);
  if (!item.action) return native;
  native.tag = static_cast<NSInteger>(*item.action);
  const bool terminates = item.action == MenuAction::terminate;
  native.action = terminates ? @selector(terminate:) : @selector(choose:);
  native.target = terminates ? nil : target;
  return native;
}

MenuItem itemBehind(NSMenuItem* native) {
  MenuItem item;
  item.title = utf8(native.title);
  item.action = static_cast<MenuAction>(native.tag);
  item.key = utf8(native.keyEquivalent);
  id object = native.representedObject;
  if ([object isKindOfClass:NSString.class]) {
    item.representedObject = utf8(static_cast<NSString*>(object));
  }
  return item;
}

}  // namespace

NSMenu* renderedMenu(const Menu& menu, NWMenuTarget* target) {
  NSMenu* native = [[NSMenu alloc] initWithTitle:@""];
  for (const MenuItem& item : menu) [native addItem:renderedItem(item, target)];
  return native;
}

}  // namespace notewick

@implementation NWMenuTarget {
  std::weak_ptr<notewick::StatusItemTarget> _target;
}

- (instancetype)initWithTarget:(std::weak_ptr<notewick::StatusItemTarget>)target {
  self = [super init];
  if (self != nil) _target = std::move(target);
  return self;
}

- (void)choose:(NSMenuItem*)sender {
  if (const auto target = _target.lock()) target->menuItemChosen(notewick::itemBehind(sender));
}

@end
