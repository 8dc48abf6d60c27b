#pragma once

#include <optional>

#include "tools/local-service/accounts.h"
#include "tools/local-service/http.h"
#include "tools/local-service/notes.h"
#include "tools/local-service/router.h"
#include "tools/local-service/tokens.h"

namespace notewick::service {

/// The web pages: "/login" and "/case-notes". A signed-in browser is known by a cookie that scripts
/// and other sites cannot use.
class Pages {
 public:
  /// secure: the pages are served over TLS, and the cookie goes nowhere else.
  Pages(Accounts& accounts, Notes& notes, Tokens& tokens, bool secure);

  /// The router must not outlive this object.
  void addTo(Router& router);

 private:
  [[nodiscard]] Answer showLogin(const Request& request);
  [[nodiscard]] Answer logIn(const Request& request);
  [[nodiscard]] Answer logOut(const Request& request);
  [[nodiscard]] Answer showNotes(const Request& request);
  [[nodiscard]] std::optional<AccountId> visitor(const Request& request);
  [[nodiscard]] std::pair<std::string, std::string> cookie(std::string_view value) const;

  Accounts& accounts_;
  Notes& notes_;
  Tokens& tokens_;
  bool secure_;
};

}  // namespace notewick::service
