#pragma once

#include "tools/local-service/listener.h"
#include "tools/local-service/records.h"

namespace notewick::service {

/// The four JSON endpoints that the program speaks to (README.md). Bodies that are not what an
/// endpoint takes are answered 400, a missing or stale token 401.
[[nodiscard]] Routes apiRoutes(Records& records);

/// The web pages. They load nothing, run nothing, are framed by no one, and are not kept. A
/// signed-in browser is known by a cookie that scripts and other sites cannot use; where the pages
/// are served over TLS (secure), it goes nowhere else.
[[nodiscard]] Routes pageRoutes(Records& records, bool secure);

}  // namespace notewick::service
