#pragma once

#include <cstdlib>
#include <memory>

#include "platform/freed.h"

namespace notewick {

/// A reply, an error or an event of the X server, which XCB leaves to its caller to free.
template <class T>
using XcbOwned = std::unique_ptr<T, Freed<std::free>>;

}  // namespace notewick
