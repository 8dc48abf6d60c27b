#pragma once

// Windows and the status bar.

#include "AppKit.h"

#pragma clang assume_nonnull begin

extern "C" const NSNotificationName NSWindowDidMoveNotification;
extern "C" const NSNotificationName NSWindowDidResizeNotification;
extern "C" const NSNotificationName NSWindowWillMoveNotification;

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
@property BOOL autorecalculatesKeyViewLoop;
@property NSWindowCollectionBehavior collectionBehavior;
@property(nullable, retain) __kindof NSView* contentView;
@property(nullable, retain) NSButtonCell* defaultButtonCell;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property(nullable, readonly) NSResponder* firstResponder;
@property(readonly) NSRect frame;
@property(readonly) NSWindowFrameAutosaveName frameAutosaveName;
@property BOOL hidesOnDeactivate;
@property(nullable, weak) NSView* initialFirstResponder;
@property(getter=isKeyWindow, readonly) BOOL keyWindow;
@property NSWindowLevel level;
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property NSWindowStyleMask styleMask;
@property(copy) NSString* title;
@property(getter=isVisible, readonly) BOOL visible;
@property(readonly) NSInteger windowNumber;
+ (void)removeFrameUsingName:(NSWindowFrameAutosaveName)name;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer;
- (void)center;
- (void)close;
- (NSRect)frameRectForContentRect:(NSRect)rect;
- (void)layoutIfNeeded;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)performClose:(nullable id)sender;
- (void)recalculateKeyViewLoop;
- (void)saveFrameUsingName:(NSWindowFrameAutosaveName)name;
- (void)selectKeyViewFollowingView:(NSView*)view;
- (void)selectNextKeyView:(nullable id)sender;
- (void)selectPreviousKeyView:(nullable id)sender;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
- (BOOL)setFrameAutosaveName:(NSWindowFrameAutosaveName)name;
- (void)setFrameOrigin:(NSPoint)origin;
- (BOOL)setFrameUsingName:(NSWindowFrameAutosaveName)name force:(BOOL)force;
@end

@interface NSPanel : NSWindow
@property BOOL becomesKeyOnlyIfNeeded;
@end

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject
@property(nullable, readonly) NSStatusBarButton* button;
@property CGFloat length;
@property(nullable, retain) NSMenu* menu;
@end

@interface NSStatusBar : NSObject
@property(class, readonly) NSStatusBar* systemStatusBar;
- (void)removeStatusItem:(NSStatusItem*)item;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
@end

#pragma clang assume_nonnull end
