#include "platform/linux/http/curl_memory.h"

#include <curl/curl.h>
#include <malloc.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace notewick {
namespace {

void* take(std::size_t size) {
  return ::operator new(size, std::nothrow);
}

void giveBack(void* memory) {
  ::operator delete(memory);
}

void* resize(void* memory, std::size_t size) {
  void* const moved = take(size);
  if (moved == nullptr || memory == nullptr) return moved;
  std::memcpy(moved, memory, std::min(size, malloc_usable_size(memory)));
  giveBack(memory);
  return moved;
}

char* copyOf(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  void* const copy = take(size);
  return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

void* takeZeros(std::size_t count, std::size_t size) {
  if (size != 0 && count > std::numeric_limits<std::size_t>::max() / size) return nullptr;
  void* const memory = take(count * size);
  return memory == nullptr ? nullptr : std::memset(memory, 0, count * size);
}

}  // namespace

bool curlIsReady() {
  static const CURLcode ready =
      curl_global_init_mem(CURL_GLOBAL_DEFAULT, take, giveBack, resize, copyOf, takeZeros);
  return ready == CURLE_OK;
}

}  // namespace notewick
