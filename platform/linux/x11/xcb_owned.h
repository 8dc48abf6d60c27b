#pragma once

#include <cstdlib>
#include <memory>

namespace notewick {

struct XcbFreed {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an error or an event of the X server, which XCB leaves to its caller to free.
template <class T>
using XcbOwned = std::unique_ptr<T, XcbFreed>;

}  // namespace notewick
