#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace notewick {

/// Owns one reference to a Core Foundation object and releases it, as the Create Rule asks of
/// whoever called a function with "Create" or "Copy" in its name.
template <class Ref>
class CFOwner {
 public:
  /// Takes over the caller's reference; null owns nothing.
  explicit CFOwner(Ref owned = nullptr) : ref_(owned) {}

  /// Adds a reference of its own to an object that somebody else owns (the Get Rule).
  [[nodiscard]] static CFOwner retaining(Ref borrowed) {
    CFRetain(borrowed);
    return CFOwner(borrowed);
  }

  CFOwner(CFOwner&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  CFOwner& operator=(CFOwner&&) = delete;
  ~CFOwner() {
    if (ref_ != nullptr) CFRelease(ref_);
  }

  [[nodiscard]] Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }

 private:
  Ref ref_;
};

}  // namespace notewick
