#include "tests/support/client_world.h"

namespace notewick {

Result<void> ClientTest::login(const std::string& email, const std::string& password) {
  Received<void> received;
  client().login(email, password, received.completion());
  loop.runPosted();
  return received.only();
}

Result<std::vector<Participant>> ClientTest::fetch() {
  Received<std::vector<Participant>> received;
  client().fetchParticipants(received.completion());
  loop.runPosted();
  return received.only();
}

Result<std::optional<std::string>> ClientTest::capture(const std::string& input) {
  Received<std::optional<std::string>> received;
  client().captureNote("2", input, 30, "2024-05-01", received.completion());
  loop.runPosted();
  return received.only();
}

void ClientTest::hasFreshToken() {
  EXPECT_TRUE(login());
  service.forgetRequests();
}

}  // namespace notewick
