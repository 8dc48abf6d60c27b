#pragma once

#include <optional>
#include <string>
#include <vector>

#include "client/velk_client.h"
#include "tests/support/received.h"
#include "tests/support/world.h"

namespace notewick {

/// A world in which the client runs without the program around it.
class ClientTest : public WorldTest {
 protected:
  [[nodiscard]] static VELKClient& client() { return VELKClient::shared(); }

  // One call each, answered before it returns.
  Result<void> login(const std::string& email = "ada@velk.example",
                     const std::string& password = "correct horse");
  Result<std::vector<Participant>> fetch();
  Result<std::optional<std::string>> capture(const std::string& input = "Phoned");

  /// The client holds an access token that is good for an hour; no request is remembered.
  void hasFreshToken();

  [[nodiscard]] std::string authorizationOf(std::size_t request) const {
    return service.requests.at(request).header("Authorization").value_or("none");
  }
};

}  // namespace notewick
