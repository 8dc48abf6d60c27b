#pragma once

#include <optional>

namespace notewick::service {

/// Shuts down (as shutdown(2) with SHUT_RD, SHUT_WR or SHUT_RDWR does) the connections that this
/// process has accepted on a local port: all, or only the one from a remote port. The HTTP library
/// keeps its sockets to itself, so they are looked up among the process's descriptors. Their owner
/// still closes them.
void shutConnections(int localPort, std::optional<int> remotePort, int how);

}  // namespace notewick::service
