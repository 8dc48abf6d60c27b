#include "platform/macos/session/single_instance.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace notewick {
namespace {

constexpr CFTimeInterval SEND_SECONDS = 1;

CFStringRef portName() { return (__bridge CFStringRef) @"tools.velk.notewick.instance"; }

CFDataRef messageArrived(CFMessagePortRef, SInt32, CFDataRef, void* startedAgain) {
  (*static_cast<std::function<void()>*>(startedAgain))();
  return nullptr;
}

CFMessagePortRef createPort(std::function<void()>* startedAgain) {
  CFMessagePortContext context = {0, startedAgain, nullptr, nullptr, nullptr};
  return CFMessagePortCreateLocal(nullptr, portName(), messageArrived, &context, nullptr);
}

bool tellOther() {
  const CFOwner<CFMessagePortRef> other(CFMessagePortCreateRemote(nullptr, portName()));
  if (!other) return false;
  return CFMessagePortSendRequest(other.get(), 0, (__bridge CFDataRef)NSData.data, SEND_SECONDS, 0,
                                  nullptr, nullptr) == kCFMessagePortSuccess;
}

}  // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim(std::function<void()> startedAgain) {
  if (tellOther()) return nullptr;
  auto instance = std::make_unique<SingleInstance>(std::move(startedAgain));
  const bool outrun = !instance->port_ && tellOther();
  return outrun ? nullptr : std::move(instance);
}

SingleInstance::SingleInstance(std::function<void()> startedAgain)
    : startedAgain_(std::move(startedAgain)), port_(createPort(&startedAgain_)) {
  if (!port_) return;
  const CFOwner<CFRunLoopSourceRef> source(
      CFMessagePortCreateRunLoopSource(nullptr, port_.get(), 0));
  CFRunLoopAddSource(CFRunLoopGetMain(), source.get(), kCFRunLoopCommonModes);
}

SingleInstance::~SingleInstance() {
  if (port_) CFMessagePortInvalidate(port_.get());
}

}  // namespace notewick
