// Memory that the program gives back is overwritten first.
//
// Tokens, passwords and notes pass through many short-lived texts: requests, answers, completions.
// A token that was replaced, or forgotten at a sign-out, must not lie in memory that nobody owns
// any more, where a core dump or the next reader of that memory would find it. Replacing the global
// operators reaches every copy that C++ makes, in the libraries, too. What libraries take from
// malloc itself stays theirs (docs/security.md). Over-aligned memory holds no texts and is left to
// the standard library.

#ifdef __APPLE__
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::size_t sizeOf(void* memory) {
#ifdef __APPLE__
  return malloc_size(memory);
#else
  return malloc_usable_size(memory);
#endif
}

void wipe(void* memory, std::size_t size) {
  std::memset(memory, 0, size);
  // Without a reader that the compiler does not know, it leaves out what nobody reads.
  asm volatile("" : : "r"(memory) : "memory");
}

}  // namespace

void* operator new(std::size_t size) {
  for (;;) {
    if (void* const memory = std::malloc(size > 0 ? size : 1)) return memory;
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}

// The same as the standard library's. A sanitizer puts its own in that one's place, and the
// operators below could not give back what it has taken.
void* operator new(std::size_t size, const std::nothrow_t& /*chosen*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  wipe(memory, sizeOf(memory));
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  operator delete(memory);
}
