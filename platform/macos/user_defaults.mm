#include "platform/macos/user_defaults.h"

#include "platform/macos/bridge/text.h"

namespace notewick {

NSUserDefaults* withoutArguments(NSUserDefaults* database) {
  [database removeVolatileDomainForName:NSArgumentDomain];
  [database setVolatileDomain:@{@"NSTreatUnknownArgumentsAsOpen" : @"NO"} forName:NSArgumentDomain];
  return database;
}

std::optional<std::string> CocoaUserDefaults::string(const std::string& key) {
  id value = [database_ objectForKey:nsString(key)];
  if (![value isKindOfClass:NSString.class]) return std::nullopt;
  return utf8(static_cast<NSString*>(value));
}

std::optional<bool> CocoaUserDefaults::boolean(const std::string& key) {
  id value = [database_ objectForKey:nsString(key)];
  if (value == nil || CFGetTypeID((__bridge CFTypeRef)value) != CFBooleanGetTypeID()) {
    return std::nullopt;
  }
  return static_cast<NSNumber*>(value).boolValue;
}

void CocoaUserDefaults::setString(const std::string& key, const std::string& value) {
  [database_ setObject:nsString(value) forKey:nsString(key)];
}

void CocoaUserDefaults::setBoolean(const std::string& key, bool value) {
  [database_ setBool:value forKey:nsString(key)];
}

void CocoaUserDefaults::remove(const std::string& key) {
  [database_ removeObjectForKey:nsString(key)];
}

}  // namespace notewick
