#pragma once

#include <functional>

namespace notewick::service {

/// Shuts down, in both directions, the connections that this process has accepted on a local port
/// and whose remote port is chosen. The HTTP library keeps its sockets to itself, so they are
/// looked up among the process's descriptors. Their owner still closes them.
void shutConnections(int localPort, const std::function<bool(int remotePort)>& chosen);

}  // namespace notewick::service
