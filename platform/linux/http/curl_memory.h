#pragma once

namespace notewick {

/// Makes libcurl ready for use, with memory that comes from C++'s operators: the program wipes what
/// they get back (`platform/posix/wiped_memory.cpp`), and requests and answers hold tokens. Returns
/// whether it is ready. Later calls change nothing. Main thread.
[[nodiscard]] bool curlIsReady();

}  // namespace notewick
