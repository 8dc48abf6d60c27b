#import <AppKit/AppKit.h>

void setTitle(NSButton* button) { button.title = @[ @"Send" ]; }
