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

 private:
  using Clock = std::chrono::steady_clock;

  [[nodiscard]] float secondsLeft() const {
    if (ranOver_) return 0;
    return (SAMPLE_LIMIT - std::chrono::duration<float>(Clock::now() - start_)).count();
  }

  Clock::time_point start_ = Clock::now();
  bool ranOver_ = false;
};

class ElementWindow final : public ScreenWindow {
 public:
  ElementWindow(Element element, std::shared_ptr<Sample> sample)
      : element_(std::move(element)), sample_(std::move(sample)) {}

  std::optional<std::string> title() override {
    const auto value = sample_->read(element_, kAXTitleAttribute, CFStringGetTypeID());
    if (!value) return std::nullopt;
    return utf8((__bridge NSString*)value.get());
  }

 private:
  Element element_;
  std::shared_ptr<Sample> sample_;
};

class ElementApplication final : public ScreenApplication {
 public:
  explicit ElementApplication(NSRunningApplication* application)
      : application_(application),
        element_(AXUIElementCreateApplication(application.processIdentifier)) {}

  std::optional<std::string> localizedName() override {
    NSString* name = application_.localizedName;
    if (name == nil) return std::nullopt;
    return utf8(name);
  }

  std::unique_ptr<ScreenWindow> focusedWindow() override {
    const auto value = sample_->read(element_, kAXFocusedWindowAttribute, AXUIElementGetTypeID());
    return value ? window(value.get()) : nullptr;
  }

  std::vector<std::unique_ptr<ScreenWindow>> windows() override {
    const auto value = sample_->read(element_, kAXWindowsAttribute, CFArrayGetTypeID());
    std::vector<std::unique_ptr<ScreenWindow>> found;
    if (!value) return found;
    for (id entry in (__bridge NSArray*)value.get()) {
      const auto ref = (__bridge CFTypeRef)entry;
      if (CFGetTypeID(ref) == AXUIElementGetTypeID()) found.push_back(window(ref));
    }
    return found;
  }

 private:
  [[nodiscard]] std::unique_ptr<ScreenWindow> window(CFTypeRef borrowed) const {
    return std::make_unique<ElementWindow>(
        Element::retaining(static_cast<AXUIElementRef>(borrowed)), sample_);
  }

  NSRunningApplication* application_;
  Element element_;
  std::shared_ptr<Sample> sample_ = std::make_shared<Sample>();
};

}  // namespace

std::unique_ptr<ScreenApplication> AccessibilityScreen::frontmostApplication() {
  NSRunningApplication* frontmost = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (frontmost == nil) return nullptr;
  return std::make_unique<ElementApplication>(frontmost);
}

}  // namespace notewick
