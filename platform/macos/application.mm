#include "platform/macos/application.h"

#include <utility>

@interface NWApplicationEvents : NSObject <NSApplicationDelegate>
- (instancetype)initWithDelegate:(std::weak_ptr<notewick::ApplicationDelegate>)delegate;
@end

@implementation NWApplicationEvents {
  std::weak_ptr<notewick::ApplicationDelegate> _delegate;
}

- (instancetype)initWithDelegate:(std::weak_ptr<notewick::ApplicationDelegate>)delegate {
  self = [super init];
  if (self != nil) _delegate = std::move(delegate);
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  if (const auto delegate = _delegate.lock()) delegate->applicationDidFinishLaunching();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
  if (const auto delegate = _delegate.lock()) delegate->applicationReopened();
  return NO;
}

- (void)applicationWillTerminate:(NSNotification*)notification {
  if (const auto delegate = _delegate.lock()) delegate->applicationWillTerminate();
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
  return YES;
}

@end

namespace notewick {

void CocoaApplication::becomeAccessory() {
  [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

int CocoaApplication::run(std::weak_ptr<ApplicationDelegate> delegate) {
  instance_ = SingleInstance::claim([delegate] {
    if (const auto target = delegate.lock()) target->applicationReopened();
  });
  if (!instance_) return 0;
  activity_ = [NSProcessInfo.processInfo
      beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                        reason:@"Looks at the screen and uploads notes at fixed intervals"];
  NSApplication* application = NSApplication.sharedApplication;
  events_ = [[NWApplicationEvents alloc] initWithDelegate:delegate];
  application.delegate = events_;
  application.mainMenu = editingMenu();
  signals_ = std::make_unique<TerminationSignals>([application] { [application terminate:nil]; });
  [application run];
  return 0;
}

NSMenu* editingMenu() {
  NSMenu* edit = [[NSMenu alloc] initWithTitle:@"Edit"];
  [edit addItemWithTitle:@"Undo" action:NSSelectorFromString(@"undo:") keyEquivalent:@"z"];
  [edit addItemWithTitle:@"Cut" action:@selector(cut:) keyEquivalent:@"x"];
  [edit addItemWithTitle:@"Copy" action:@selector(copy:) keyEquivalent:@"c"];
  [edit addItemWithTitle:@"Paste" action:@selector(paste:) keyEquivalent:@"v"];
  [edit addItemWithTitle:@"Select All" action:@selector(selectAll:) keyEquivalent:@"a"];
  [edit addItemWithTitle:@"Close" action:@selector(performClose:) keyEquivalent:@"w"];
  NSMenu* bar = [[NSMenu alloc] initWithTitle:@""];
  NSMenuItem* holder = [[NSMenuItem alloc] initWithTitle:@"Edit" action:nil keyEquivalent:@""];
  holder.submenu = edit;
  [bar addItem:holder];
  return bar;
}

}  // namespace notewick
