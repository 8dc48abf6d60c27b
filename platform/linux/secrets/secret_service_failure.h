#pragma once

#include <QDBusError>
#include <tl/expected.hpp>

namespace notewick {

/// Why the secret service gave no answer.
enum class SecretServiceFailure {
  missing,     ///< no program is the service, or there is no session bus
  unanswered,  ///< the question was not answered in time, or not delivered: asked again, it may be
  locked,      ///< what the service said to be open is locked by now
  refused,     ///< the service answered no
};

template <class T>
using SecretServiceAnswer = tl::expected<T, SecretServiceFailure>;

/// What an error on the bus means. Time-outs, and calls that were refused for load, say nothing
/// about the secret: they are `unanswered`. So is a call whose receiver left the bus before it
/// answered. Every error that is not known here is the service's own no, and `refused`.
[[nodiscard]] SecretServiceFailure failureOf(const QDBusError& error);

/// Whether the bus, or the service, turned the call away for want of room or memory. Nothing was
/// done then, and the same call can be made again.
[[nodiscard]] bool isRefusedForLoad(const QDBusError& error);

}  // namespace notewick
