#pragma once

#include <functional>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

namespace notewick {

struct HttpSessionConfiguration {
  double requestTimeout;  ///< seconds of inactivity, where the request does not say its own
};

struct HttpRequest {
  std::string method;
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::optional<std::string> body;
  double timeout;  ///< seconds without a byte either way, connecting included; no total limit
};

struct HttpResponse {
  std::optional<int> statusCode;    ///< absent when what came back was no HTTP response
  std::optional<std::string> body;  ///< absent when no bytes came, or more than 8 MiB
};

/// The request did not end in an answer: no connection, time-out, TLS failure, an answer that broke
/// off or whose head is larger than 256 KiB, a proxy that refused, cancelled.
struct TransportError {
  std::string description;  ///< for the user, short, without the address
};

using HttpCompletion = std::function<void(tl::expected<HttpResponse, TransportError>)>;

/// HTTP with nothing kept on disk: no cookies, no cache, no credentials. TLS certificates are
/// always verified. Redirects are never followed: the 3xx is the answer, so that a token reaches no
/// other host. The user's proxies are followed, except for addresses on this machine; what a proxy
/// answers for itself is never the answer. An informational answer (1xx) is passed over, but 101 is
/// an error.
class HttpSession {
 public:
  virtual ~HttpSession() = default;

  /// Starts the request at once, however many are under way; whoever sends limits their number.
  /// `completion` is called exactly once, on the main thread, in a later turn, never inside this
  /// call. Sends exactly the headers given, besides what the protocol itself demands, and the body
  /// at most once. Destroying the session drops the completions that have not run.
  virtual void send(HttpRequest request, HttpCompletion completion) = 0;
};

}  // namespace notewick
