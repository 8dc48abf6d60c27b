#include "platform/linux/session/large_memory.h"

#include <malloc.h>

namespace notewick {
namespace {

constexpr int SMALLEST_LARGE_PIECE = 1024 * 1024;  // more than the lists of most users

}  // namespace

void returnLargeMemory() {
  mallopt(M_MMAP_THRESHOLD, SMALLEST_LARGE_PIECE);
  mallopt(M_TRIM_THRESHOLD, 2 * SMALLEST_LARGE_PIECE);
}

}  // namespace notewick
