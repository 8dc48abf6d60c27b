#import <AppKit/AppKit.h>

SEL unknown() { return @selector(sendd:); }
