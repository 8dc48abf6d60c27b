#import <AppKit/AppKit.h>

NSString* text(CFTypeRef value) { return static_cast<NSString*>(value); }
