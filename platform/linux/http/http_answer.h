#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

#include "platform/http_session.h"

namespace notewick {

using HttpOutcome = tl::expected<HttpResponse, TransportError>;

/// Whose head comes first: where a proxy makes a tunnel, it answers before the service does.
enum class FirstHead { service, proxy };

/// One answer while it arrives, within bounds: a head line after the other, then the body.
///
/// An informational status (1xx) is no answer yet and is passed over. 101 is an error: it would end
/// HTTP on this connection. So is a status line that is not HTTP/1.x's.
class HttpAnswer {
 public:
  /// All heads of an answer together, informational ones and a trailer included.
  static constexpr std::size_t LARGEST_HEAD = 256UL * 1024;
  /// A proxy's, which libcurl takes in byte by byte without a pause.
  static constexpr std::size_t LARGEST_PROXY_HEAD = 32UL * 1024;
  static constexpr std::size_t LARGEST_BODY = 8UL * 1024 * 1024;

  explicit HttpAnswer(FirstHead first) : proxyIsNext_(first == FirstHead::proxy) {}

  /// A line of a head or a trailer, with its end. False when the transfer has to end here.
  [[nodiscard]] bool takeLine(std::string_view line);
  /// The next piece of the body. False when the transfer has to end here.
  [[nodiscard]] bool takeBody(std::string_view piece);

  /// The body is known to be too large; it does not come.
  void leaveBodyOut();

  /// What the transfer came to. `failure` says why it ended early, where this object did not end
  /// it. A body that is too large is absent.
  [[nodiscard]] HttpOutcome outcome(const std::optional<TransportError>& failure) const&;
  /// The same, without a copy of the body.
  [[nodiscard]] HttpOutcome outcome(const std::optional<TransportError>& failure) &&;

 private:
  [[nodiscard]] bool takeStatusLine(std::string_view line);
  [[nodiscard]] bool endHead();
  [[nodiscard]] bool refuse(const char* description);

  enum class Part { statusLine, fields, rest };

  bool proxyIsNext_;
  Part part_ = Part::statusLine;
  std::size_t headSize_ = 0;
  int status_ = 0;
  bool bodyIsLeftOut_ = false;
  std::string body_;
  const char* refusal_ = nullptr;
};

}  // namespace notewick
