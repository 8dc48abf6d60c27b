#include "platform/linux/session/large_memory.h"

#include <malloc.h>

namespace notewick {
namespace {

constexpr int SMALLEST_LARGE_PIECE = 128 * 1024;  // glibc's own, before it learns

}  // namespace

void returnLargeMemory() {
  mallopt(M_MMAP_THRESHOLD, SMALLEST_LARGE_PIECE);
}

}  // namespace notewick
