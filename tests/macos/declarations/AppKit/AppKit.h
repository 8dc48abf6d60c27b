#pragma once

#include "values.h"

#pragma clang assume_nonnull begin

@class NSApplication, NSGraphicsContext, NSMenu, NSMenuItem, NSRunningApplication, NSText,
    NSTextView, NSView, NSWindow;

// --- What many classes share ---------------------------------------------------------------------
@protocol NSAccessibility <NSObject>
@property(nullable, copy) NSString* accessibilityLabel;
@end

extern "C" {
extern const NSAccessibilityNotificationName NSAccessibilityAnnouncementRequestedNotification;
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityAnnouncementKey;
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityPriorityKey;
void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id>* _Nullable userInfo);
}

@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)doCommandBySelector:(SEL)command;
- (void)insertBacktab:(nullable id)sender;
- (void)insertNewline:(nullable id)sender;
- (void)insertTab:(nullable id)sender;
@end

@interface NSEvent : NSObject <NSCopying>
@property(getter=isARepeat, readonly) BOOL ARepeat;
@property(nullable, readonly) NSString* charactersIgnoringModifiers;
@property(readonly) NSInteger clickCount;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(class, readonly) NSUInteger pressedMouseButtons;
@property(readonly) NSEventType type;
+ (nullable NSEvent*)keyEventWithType:(NSEventType)type
                             location:(NSPoint)location
                        modifierFlags:(NSEventModifierFlags)flags
                            timestamp:(NSTimeInterval)time
                         windowNumber:(NSInteger)windowNumber
                              context:(nullable NSGraphicsContext*)context
                           characters:(NSString*)characters
          charactersIgnoringModifiers:(NSString*)charactersIgnoringModifiers
                            isARepeat:(BOOL)isARepeat
                              keyCode:(unsigned short)keyCode;
+ (nullable NSEvent*)mouseEventWithType:(NSEventType)type
                               location:(NSPoint)location
                          modifierFlags:(NSEventModifierFlags)flags
                              timestamp:(NSTimeInterval)time
                           windowNumber:(NSInteger)windowNumber
                                context:(nullable NSGraphicsContext*)context
                            eventNumber:(NSInteger)eventNumber
                             clickCount:(NSInteger)clickCount
                               pressure:(float)pressure;
@end

@interface NSResponder : NSObject <NSStandardKeyBindingResponding>
@property(nullable, readonly) NSUndoManager* undoManager;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
@end

// --- Application and system ----------------------------------------------------------------------
@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender
                    hasVisibleWindows:(BOOL)hasVisibleWindows;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;
- (void)applicationWillTerminate:(NSNotification*)notification;
@end

@interface NSApplication : NSResponder
@property(class, readonly) __kindof NSApplication* sharedApplication;
@property(getter=isActive, readonly) BOOL active;
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, retain) NSMenu* mainMenu;
- (NSApplicationActivationPolicy)activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (void)run;
- (void)yieldActivationToApplication:(NSRunningApplication*)application;
- (void)terminate:(nullable id)sender;
@end

@interface NSRunningApplication : NSObject
@property(class, readonly) NSRunningApplication* currentApplication;
@property(nullable, readonly) NSString* localizedName;
@property(readonly) pid_t processIdentifier;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end

@interface NSWorkspace : NSObject
@property(class, readonly) NSWorkspace* sharedWorkspace;
@property(nullable, readonly) NSRunningApplication* frontmostApplication;
- (BOOL)openURL:(NSURL*)url;
@end

@interface NSScreen : NSObject
@property(class, nullable, readonly) NSScreen* mainScreen;
@property(class, readonly) NSArray<NSScreen*>* screens;
@property(readonly) NSRect visibleFrame;
@end

// --- Looks ---------------------------------------------------------------------------------------
@interface NSColor : NSObject <NSCopying>
@property(class, readonly) NSColor* labelColor;
@property(class, readonly) NSColor* secondaryLabelColor;
@property(class, readonly) NSColor* systemRedColor;
@property(class, readonly) NSColor* tertiaryLabelColor;
@property(class, readonly) NSColor* textColor;
@end

@interface NSFont : NSObject <NSCopying>
+ (NSFont*)boldSystemFontOfSize:(CGFloat)size;
+ (CGFloat)systemFontSizeForControlSize:(NSControlSize)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
@end

@interface NSImage : NSObject <NSCopying>
@property(nullable, copy) NSString* accessibilityDescription;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description;
@end

// --- Menus ---------------------------------------------------------------------------------------
@interface NSMenu : NSObject <NSCopying>
@property(copy) NSArray<NSMenuItem*>* itemArray;
@property(readonly) NSInteger numberOfItems;
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
- (NSMenuItem*)addItemWithTitle:(NSString*)title
                         action:(nullable SEL)action
                  keyEquivalent:(NSString*)key;
- (NSInteger)indexOfItemWithTitle:(NSString*)title;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
- (void)performActionForItemAtIndex:(NSInteger)index;
- (void)update;
@end

@interface NSMenuItem : NSObject <NSCopying>
@property(nullable) SEL action;
@property(getter=isEnabled) BOOL enabled;
@property(readonly) BOOL isSeparatorItem;
@property(copy) NSString* keyEquivalent;
@property(nullable, retain) id representedObject;
@property(nullable, retain) NSMenu* submenu;
@property NSInteger tag;
@property(nullable, weak) id target;
@property(copy) NSString* title;
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)key;
@end

// --- Views ---------------------------------------------------------------------------------------
@interface NSLayoutConstraint : NSObject
@property(getter=isActive) BOOL active;
@end

@interface NSLayoutDimension : NSObject
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)constant;
- (NSLayoutConstraint*)constraintLessThanOrEqualToConstant:(CGFloat)constant;
@end

@interface NSView : NSResponder <NSAccessibility>
@property NSAutoresizingMaskOptions autoresizingMask;
@property(readonly) BOOL canBecomeKeyView;
@property(readonly) NSSize fittingSize;
@property NSRect frame;
@property(readonly) NSLayoutDimension* heightAnchor;
@property(getter=isHidden) BOOL hidden;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property(nullable) NSView* nextKeyView;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(readonly) NSLayoutDimension* widthAnchor;
@property(nullable, readonly) NSWindow* window;
- (instancetype)initWithFrame:(NSRect)frame;
- (NSRect)alignmentRectForFrame:(NSRect)frame;
- (void)removeFromSuperview;
@end

@interface NSStackView : NSView
@property NSLayoutAttribute alignment;
@property(readonly) NSArray<__kindof NSView*>* arrangedSubviews;
@property BOOL detachesHiddenViews;
@property NSEdgeInsets edgeInsets;
@property NSUserInterfaceLayoutOrientation orientation;
@property CGFloat spacing;
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
- (void)addArrangedSubview:(NSView*)view;
- (void)removeArrangedSubview:(NSView*)view;
@end

@interface NSScrollView : NSView
@property NSBorderType borderType;
@property(nullable, retain) __kindof NSView* documentView;
@property BOOL hasVerticalScroller;
@end

@interface NSProgressIndicator : NSView
@property NSControlSize controlSize;
@property NSProgressIndicatorStyle style;
- (void)startAnimation:(nullable id)sender;
- (void)stopAnimation:(nullable id)sender;
@end

// --- Controls ------------------------------------------------------------------------------------
@interface NSCell : NSObject <NSCopying>
- (void)performClick:(nullable id)sender;
@end

@interface NSActionCell : NSCell
@end

@interface NSButtonCell : NSActionCell
@end

@interface NSControl : NSView
@property(nullable) SEL action;
@property(nullable, retain) __kindof NSCell* cell;
@property NSControlSize controlSize;
@property(getter=isEnabled) BOOL enabled;
@property(nullable, retain) NSFont* font;
@property NSLineBreakMode lineBreakMode;
@property(copy) NSString* stringValue;
@property NSInteger tag;
- (nullable NSText*)currentEditor;
- (void)performClick:(nullable id)sender;
@end

@interface NSTextField : NSControl
@property(getter=isEditable) BOOL editable;
@property(nullable, copy) NSString* placeholderString;
@property CGFloat preferredMaxLayoutWidth;
@property(getter=isSelectable) BOOL selectable;
@property(nullable, copy) NSColor* textColor;
+ (instancetype)labelWithString:(NSString*)text;
+ (instancetype)textFieldWithString:(NSString*)text;
+ (instancetype)wrappingLabelWithString:(NSString*)text;
@end

@interface NSSecureTextField : NSTextField
@end

@interface NSButton : NSControl
@property NSBezelStyle bezelStyle;
@property(nullable, retain) NSImage* image;
@property NSCellImagePosition imagePosition;
@property(copy) NSString* keyEquivalent;
@property(copy) NSString* title;
+ (instancetype)buttonWithTitle:(NSString*)title
                         target:(nullable id)target
                         action:(nullable SEL)action;
@end

@interface NSPopUpButton : NSButton
@property(readonly) NSInteger indexOfSelectedItem;
@property(readonly) NSInteger numberOfItems;
- (instancetype)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown;
- (void)insertItemWithTitle:(NSString*)title atIndex:(NSInteger)index;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
- (NSString*)itemTitleAtIndex:(NSInteger)index;
- (void)removeItemAtIndex:(NSInteger)index;
- (void)selectItemAtIndex:(NSInteger)index;
@end

@interface NSSegmentedControl : NSControl
@property NSInteger selectedSegment;
+ (instancetype)segmentedControlWithLabels:(NSArray<NSString*>*)labels
                              trackingMode:(NSSegmentSwitchTracking)trackingMode
                                    target:(nullable id)target
                                    action:(nullable SEL)action;
- (nullable NSString*)labelForSegment:(NSInteger)segment;
@end

// --- Text ----------------------------------------------------------------------------------------
@protocol NSTextDelegate <NSObject>
@optional
- (void)textDidChange:(NSNotification*)notification;
@end

@protocol NSTextViewDelegate <NSTextDelegate>
@optional
- (BOOL)textView:(NSTextView*)textView doCommandBySelector:(SEL)command;
@end

@interface NSText : NSView
@property(nullable, retain) NSFont* font;
@property(getter=isRichText) BOOL richText;
@property(copy) NSString* string;
@property(nullable, copy) NSColor* textColor;
- (void)copy:(nullable id)sender;
- (void)cut:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

@protocol NSTextInputClient
- (void)insertText:(id)text replacementRange:(NSRange)range;
@end

@interface NSTextView : NSText <NSTextInputClient>
@property BOOL allowsUndo;
@property(nullable, weak) id<NSTextViewDelegate> delegate;
@property NSSize textContainerInset;
+ (NSScrollView*)scrollableTextView;
@end

#pragma clang assume_nonnull end

#include "windows.h"
