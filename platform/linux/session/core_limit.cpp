#include "platform/linux/session/core_limit.h"

#include <sys/resource.h>

#include <optional>

namespace notewick {
namespace {

constexpr rlim_t NOT_EVEN_PIPED = 1;

std::optional<rlimit> atStart;

}  // namespace

void refuseCores() {
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) != 0) return;
  atStart = limit;
  limit.rlim_cur = NOT_EVEN_PIPED;
  setrlimit(RLIMIT_CORE, &limit);
}

void allowCores() {
  if (atStart) setrlimit(RLIMIT_CORE, &*atStart);
}

}  // namespace notewick
