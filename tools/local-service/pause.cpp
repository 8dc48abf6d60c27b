#include "tools/local-service/pause.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace notewick::service {

Pause::Pause() {
  if (pipe(ends_) != 0) throw std::runtime_error("no pipe");
  for (const int end : ends_) fcntl(end, F_SETFD, FD_CLOEXEC);
}

Pause::~Pause() {
  for (const int end : ends_) close(end);
}

void Pause::wait(std::chrono::milliseconds duration) const {
  constexpr std::chrono::milliseconds::rep LONGEST = std::numeric_limits<int>::max();
  pollfd ended{.fd = ends_[0], .events = POLLIN, .revents = 0};
  poll(&ended, 1,
       static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(duration.count(), 0, LONGEST)));
}

void Pause::end() const {
  const char anything = 0;
  (void)!write(ends_[1], &anything, 1);
}

}  // namespace notewick::service
