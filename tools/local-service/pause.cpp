#include "tools/local-service/pause.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace notewick::service {

Pause::Pause() : ended_(eventfd(0, EFD_CLOEXEC)) {
  if (ended_ < 0) throw std::runtime_error("no event descriptor");
}

Pause::~Pause() {
  close(ended_);
}

void Pause::wait(std::chrono::milliseconds duration) const {
  constexpr std::chrono::milliseconds::rep LONGEST = std::numeric_limits<int>::max();
  pollfd ended{.fd = ended_, .events = POLLIN, .revents = 0};
  poll(&ended, 1,
       static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(duration.count(), 0, LONGEST)));
}

void Pause::end() const {
  eventfd_write(ended_, 1);
}

}  // namespace notewick::service
