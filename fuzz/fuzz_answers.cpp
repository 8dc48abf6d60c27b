// A service may answer with any bytes.
#include <cstdlib>

#include "client/json_map.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const auto map = notewick::parseMap({reinterpret_cast<const char*>(data), size});
  if (!map.is_object()) std::abort();
  (void)notewick::participantsIn(map);
  (void)notewick::textAt(map, "error");
  return 0;
}
