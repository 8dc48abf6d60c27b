// The base URL is whatever somebody wrote into the settings.
#include <cstdlib>

#include "client/uri.h"
#include "platform/web_address.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto origin = notewick::uriOrigin(text);
  if (!text.starts_with(origin)) std::abort();
  if (notewick::isUriReference(text) && !notewick::isUriReference(origin)) std::abort();
  return 0;
}
