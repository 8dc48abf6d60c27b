#include "platform/macos/screen.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>

#include <chrono>

#include "platform/macos/bridge/cf_owner.h"
#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

using Element = CFOwner<AXUIElementRef>;

constexpr std::chrono::duration<float> SAMPLE_LIMIT{0.25F};

/// The attribute reads of one sample, which share its time.
class Sample {
 public:
  /// Owns nothing when the read failed or there is no such window.
  Element focusedWindow(const Element& application) {
    return elementOf(read(application, kAXFocusedWindowAttribute, AXUIElementGetTypeID()).get());
  }

  /// The first windows of the application's list, at most that many.
  std::vector<Element> windows(const Element& application, std::size_t mostWindows) {
    std::vector<Element> found;
    const auto value = read(application, kAXWindowsAttribute, CFArrayGetTypeID());
    if (!value) return found;
    for (id entry in (__bridge NSArray*)value.get()) {
      if (found.size() == mostWindows) break;
      const auto ref = (__bridge CFTypeRef)entry;
      if (CFGetTypeID(ref) == AXUIElementGetTypeID()) found.push_back(elementOf(ref));
    }
    return found;
  }

  std::optional<std::string> title(const Element& window) {
    if (!window) return std::nullopt;
    const auto value = read(window, kAXTitleAttribute, CFStringGetTypeID());
    if (!value) return std::nullopt;
    return utf8((__bridge NSString*)value.get());
  }

 private:
  using Clock = std::chrono::steady_clock;

  static Element elementOf(CFTypeRef borrowed) {
    if (borrowed == nullptr) return Element();
    return Element::retaining(static_cast<AXUIElementRef>(borrowed));
  }

  /// A value of that type; owns nothing when the read failed, ran over, or gave another type.
  CFOwner<CFTypeRef> read(const Element& element, CFStringRef attribute, CFTypeID type) {
    const float left = secondsLeft();
    if (left <= 0) return CFOwner<CFTypeRef>();
    AXUIElementSetMessagingTimeout(element.get(), left);
    CFTypeRef copied = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(element.get(), attribute, &copied);
    CFOwner<CFTypeRef> value(copied);
    if (error == kAXErrorCannotComplete) ranOver_ = true;
    const bool usable = error == kAXErrorSuccess && value && CFGetTypeID(copied) == type;
    return usable ? std::move(value) : CFOwner<CFTypeRef>();
  }

  [[nodiscard]] float secondsLeft() const {
    if (ranOver_) return 0;
    return (SAMPLE_LIMIT - std::chrono::duration<float>(Clock::now() - start_)).count();
  }

  Clock::time_point start_ = Clock::now();
  bool ranOver_ = false;
};

}  // namespace

std::optional<FrontmostApplication> AccessibilityScreen::frontmostApplication(
    std::size_t mostWindows) {
  NSRunningApplication* frontmost = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (frontmost == nil) return std::nullopt;
  const Element element(AXUIElementCreateApplication(frontmost.processIdentifier));
  FrontmostApplication application;
  if (frontmost.localizedName != nil) application.name = utf8(frontmost.localizedName);
  Sample sample;
  application.focusedTitle = sample.title(sample.focusedWindow(element));
  for (const Element& window : sample.windows(element, mostWindows)) {
    application.titles.push_back(sample.title(window));
  }
  return application;
}

}  // namespace notewick
