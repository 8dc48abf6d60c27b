#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/menu.h"
#include "platform/status_item.h"

/// The target of every item with an action, but for the terminate action, which needs none. Chosen
/// items are given back as data. Items hold it weakly: its owner keeps it.
@interface NWMenuTarget : NSObject
- (instancetype)initWithTarget:(std::weak_ptr<notewick::StatusItemTarget>)target;
- (void)choose:(NSMenuItem*)sender;
@end

namespace notewick {

/// Draws the menu as it stands, title for title.
[[nodiscard]] NSMenu* renderedMenu(const Menu& menu, NWMenuTarget* target);

}  // namespace notewick
