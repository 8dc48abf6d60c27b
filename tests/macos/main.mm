#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "platform/macos/application.h"

/// The controls need the shared application object, but not its event loop.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  notewick::CocoaApplication().becomeAccessory();
  return RUN_ALL_TESTS();
}
