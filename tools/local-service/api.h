#pragma once

#include "tools/local-service/accounts.h"
#include "tools/local-service/clock.h"
#include "tools/local-service/http.h"
#include "tools/local-service/notes.h"
#include "tools/local-service/router.h"
#include "tools/local-service/tokens.h"

namespace notewick::service {

/// The four JSON endpoints that the program speaks to. Bodies that are not what an endpoint takes
/// are answered 400, a missing or stale token 401, each with an "error" text.
class Api {
 public:
  Api(Accounts& accounts, Notes& notes, Tokens& tokens, Clock clock);

  /// The router must not outlive this object.
  void addTo(Router& router);

 private:
  [[nodiscard]] Answer logIn(const Request& request);
  [[nodiscard]] Answer refresh(const Request& request);
  [[nodiscard]] Answer listParticipants(AccountId account);
  [[nodiscard]] Answer captureNote(AccountId account, const Request& request);
  [[nodiscard]] std::optional<AccountId> bearer(const Request& request);

  Accounts& accounts_;
  Notes& notes_;
  Tokens& tokens_;
  Clock clock_;
};

}  // namespace notewick::service
