// The entry points that libFuzzer calls. NOTEWICK_FUZZ_TARGET names the target.
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/targets.h"

namespace notewick::fuzz {
namespace {

using Target = void (*)(std::string_view bytes);

struct {
  const char* name;
  Target target;
} const TARGETS[] = {
    {"lists", lists},
    {"answers", answers},
    {"http_answer", http_answer},
    {"titles", titles},
    {"quoting", quoting},
    {"settings", settings},
    {"desktop_entries", desktop_entries},
    {"x11", x11},
    {"bus_answers", bus_answers},
    {"local_service", local_service},
};

Target chosenTarget() {
  const char* const chosen = std::getenv("NOTEWICK_FUZZ_TARGET");
  for (const auto& [name, target] : TARGETS) {
    if (chosen != nullptr && name == std::string(chosen)) return target;
  }
  std::fputs("NOTEWICK_FUZZ_TARGET names no target\n", stderr);
  std::exit(2);
}

}  // namespace

void require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "Broken: %s\n", promise);
  std::abort();
}

std::vector<std::string> parts(std::string_view text, char separator) {
  std::vector<std::string> all;
  for (;;) {
    const auto end = text.find(separator);
    all.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return all;
    text.remove_prefix(end + 1);
  }
}

}  // namespace notewick::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static const auto target = notewick::fuzz::chosenTarget();
  target({reinterpret_cast<const char*>(data), size});
  return 0;
}
