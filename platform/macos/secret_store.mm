#include "platform/macos/secret_store.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include "platform/macos/bridge/cf_owner.h"
#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

NSMutableDictionary* itemQuery(const SecretKey& key) {
  return [@{
    (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
    (__bridge id)kSecAttrService : nsString(key.service),
    (__bridge id)kSecAttrAccount : nsString(key.account)
  } mutableCopy];
}

NSData* dataOf(const std::string& secret) {
  return [NSData dataWithBytes:secret.data() length:secret.size()];
}

struct Reading {
  OSStatus status;
  CFOwner<CFTypeRef> data;
};

Reading readItem(const SecretKey& key) {
  NSMutableDictionary* query = itemQuery(key);
  query[(__bridge id)kSecReturnData] = @YES;
  query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;
  CFTypeRef copied = nullptr;
  const OSStatus status = SecItemCopyMatching((__bridge CFDictionaryRef)query, &copied);
  return {status, CFOwner<CFTypeRef>(copied)};
}

// The keychain in a file, which programs outside the sandbox use, has no newer calls for these.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

void allowQuestions(bool allowed) { SecKeychainSetUserInteractionAllowed(allowed); }

bool unlockDefaultKeychain() {
  return SecKeychainUnlock(nullptr, 0, nullptr, false) == errSecSuccess;
}

bool defaultKeychainIsLocked() {
  SecKeychainStatus status = 0;
  if (SecKeychainGetStatus(nullptr, &status) != errSecSuccess) return false;
  return (status & kSecUnlockStateStatus) == 0;
}

#pragma clang diagnostic pop

bool openWithQuestions(const SecretKey& key) {
  allowQuestions(true);
  const bool unlocked = unlockDefaultKeychain();
  const OSStatus status = unlocked ? readItem(key).status : errSecInteractionNotAllowed;
  allowQuestions(false);
  return status == errSecSuccess || status == errSecItemNotFound;
}

}  // namespace

SecretState KeychainSecretStore::state(const SecretKey& key) {
  if (*asking_) return SecretState::locked;
  allowQuestions(false);
  OSStatus status = SecItemCopyMatching((__bridge CFDictionaryRef)itemQuery(key), nullptr);
  if (status == errSecSuccess && defaultKeychainIsLocked()) status = errSecInteractionNotAllowed;
  if (outcome(key, status) == SecretWrite::locked) return SecretState::locked;
  return status == errSecSuccess ? SecretState::found : SecretState::absent;
}

SecretLookup KeychainSecretStore::load(const SecretKey& key) {
  if (*asking_) return {SecretState::locked, ""};
  allowQuestions(false);
  const Reading reading = readItem(key);
  if (outcome(key, reading.status) == SecretWrite::locked) return {SecretState::locked, ""};
  if (!reading.data || CFGetTypeID(reading.data.get()) != CFDataGetTypeID()) {
    return {SecretState::absent, ""};
  }
  NSString* secret = [[NSString alloc] initWithData:(__bridge NSData*)reading.data.get()
                                           encoding:NSUTF8StringEncoding];
  if (secret == nil) return {SecretState::absent, ""};
  return {SecretState::found, utf8(secret)};
}

SecretWrite KeychainSecretStore::save(const SecretKey& key, const std::string& secret) {
  if (*asking_) return SecretWrite::locked;
  allowQuestions(false);
  NSMutableDictionary* query = itemQuery(key);
  NSDictionary* data = @{(__bridge id)kSecValueData : dataOf(secret)};
  OSStatus status = SecItemUpdate((__bridge CFDictionaryRef)query, (__bridge CFDictionaryRef)data);
  if (status == errSecItemNotFound) {
    [query addEntriesFromDictionary:data];
    status = SecItemAdd((__bridge CFDictionaryRef)query, nullptr);
  }
  return outcome(key, status);
}

SecretWrite KeychainSecretStore::remove(const SecretKey& key) {
  if (*asking_) return SecretWrite::locked;
  allowQuestions(false);
  const OSStatus status = SecItemDelete((__bridge CFDictionaryRef)itemQuery(key));
  return status == errSecItemNotFound ? SecretWrite::done : outcome(key, status);
}

SecretWrite KeychainSecretStore::outcome(const SecretKey& key, int status) {
  if (status == errSecSuccess) return SecretWrite::done;
  if (status != errSecInteractionNotAllowed) return SecretWrite::failed;
  refused_ = key;
  return SecretWrite::locked;
}

void KeychainSecretStore::unlock(std::function<void(bool opened)> completion) {
  *asking_ = true;
  MainLoop* const loop = &mainLoop_;
  const SecretKey key = refused_;
  const auto asking = asking_;
  dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
    const bool opened = openWithQuestions(key);
    loop->post([asking, completion, opened] {
      *asking = false;
      completion(opened);
    });
  });
}

}  // namespace notewick
