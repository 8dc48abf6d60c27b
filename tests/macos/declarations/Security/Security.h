#pragma once

#include "../CoreFoundation/CoreFoundation.h"

typedef struct CF_BRIDGED(id) __SecKeychain* SecKeychainRef;

extern "C" {
#pragma clang assume_nonnull begin

enum : OSStatus {
  errSecSuccess = 0,
  errSecItemNotFound = -25300,
  errSecInteractionNotAllowed = -25308
};

extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecAttrAccount;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecValueData;

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef _Nullable* _Nullable result);
OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef _Nullable* _Nullable result);
OSStatus SecItemDelete(CFDictionaryRef query);
OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef attributesToUpdate);

typedef UInt32 SecKeychainStatus;
enum : UInt32 { kSecUnlockStateStatus = 1 };
OSStatus SecKeychainGetStatus(SecKeychainRef _Nullable keychain, SecKeychainStatus* status);
OSStatus SecKeychainSetUserInteractionAllowed(Boolean allowed);
OSStatus SecKeychainUnlock(SecKeychainRef _Nullable keychain, UInt32 passwordLength,
                           const void* _Nullable password, Boolean usePassword);

#pragma clang assume_nonnull end
}
