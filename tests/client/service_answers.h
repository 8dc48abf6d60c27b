#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/fake_http_session.h"

namespace notewick {

/// What a call ends in.
struct Ending {
  enum class Kind { success, api, network, sessionExpired };

  Kind kind;
  std::string text;  ///< of the error
};

/// One answer of the service, or what came in its place, and what it means to each of the calls.
struct ServiceAnswer {
  std::string name;  ///< letters and digits
  FakeService::Outcome outcome;
  Ending signIn;
  Ending refresh;
  Ending participants;
  Ending capture;
  std::vector<std::string> names = {};  ///< the participants that it brings
  double delay = 0;                     ///< seconds until it is there

  friend std::ostream& operator<<(std::ostream& out, const ServiceAnswer& answer) {
    return out << answer.name;
  }
};

/// All of them: every class of status, every shape of body, no answer at all, late ones.
[[nodiscard]] std::vector<ServiceAnswer> serviceAnswers();

}  // namespace notewick
