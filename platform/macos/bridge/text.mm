#include "platform/macos/bridge/text.h"

namespace notewick {

NSString* nsString(std::string_view text) {
  NSString* converted = [[NSString alloc] initWithBytes:text.data()
                                                 length:text.size()
                                               encoding:NSUTF8StringEncoding];
  return converted != nil ? converted : @"";
}

NSArray<NSString*>* nsStrings(const std::vector<std::string>& texts) {
  NSMutableArray<NSString*>* strings = [NSMutableArray array];
  for (const std::string& text : texts) [strings addObject:nsString(text)];
  return strings;
}

std::string utf8(NSString* text) {
  NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return {static_cast<const char*>(bytes.bytes), bytes.length};
}

}  // namespace notewick
