#include "tools/local-service/connections.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace notewick::service {
namespace {

int portOf(int socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

/// A listening socket and its connections, both ends in this process.
class ConnectionsTest : public testing::Test {
 protected:
  struct Pair {
    int near;  // accepted
    int far;
  };

  ConnectionsTest() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(listening, 8);
  }

  ~ConnectionsTest() override { close(listening); }

  Pair connected() {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
    const int far = socket(AF_INET, SOCK_STREAM, 0);
    EXPECT_EQ(connect(far, reinterpret_cast<const sockaddr*>(&address), size), 0);
    return {accept(listening, nullptr, nullptr), far};
  }

  static bool isOpen(int socket) {
    char byte = 0;
    return recv(socket, &byte, 1, MSG_DONTWAIT) < 0;  // nothing to read yet; 0 is the end
  }

  static void closeBoth(const Pair& pair) {
    close(pair.near);
    close(pair.far);
  }

  int listening = socket(AF_INET, SOCK_STREAM, 0);
};

TEST_F(ConnectionsTest, ShutsAllThatWereAcceptedOnThePort) {
  const auto first = connected(), second = connected();
  shutConnections(portOf(listening), [](int) { return true; });
  EXPECT_FALSE(isOpen(first.far));
  EXPECT_FALSE(isOpen(second.far));
  closeBoth(first);
  closeBoth(second);
}

TEST_F(ConnectionsTest, ShutsOnlyTheChosen) {
  const auto first = connected(), second = connected();
  shutConnections(portOf(listening), [&](int port) { return port == portOf(first.far); });
  EXPECT_FALSE(isOpen(first.far));
  EXPECT_TRUE(isOpen(second.far));
  closeBoth(first);
  closeBoth(second);
}

TEST_F(ConnectionsTest, LeavesTheListenerAndLaterConnectionsAlone) {
  const auto first = connected();
  shutConnections(portOf(listening), [](int) { return true; });
  const auto later = connected();
  EXPECT_TRUE(isOpen(later.far));
  closeBoth(first);
  closeBoth(later);
}

}  // namespace
}  // namespace notewick::service
