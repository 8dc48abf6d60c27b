#pragma once

#include "tools/local-service/faults.h"
#include "tools/local-service/notes.h"
#include "tools/local-service/request_log.h"
#include "tools/local-service/router.h"

namespace notewick::service {

/// The test's side entrance, on a listener of its own: sets faults, reads back requests and notes.
/// Its JSON forms are in README.md. Filled into a router that must not outlive the arguments.
void addControl(Router& router, Faults& faults, RequestLog& log, Notes& notes);

}  // namespace notewick::service
