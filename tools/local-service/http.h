#pragma once

#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace notewick::service {

/// Orders header names without regard to case (RFC 9110, 5.1).
struct HeaderOrder {
  using is_transparent = void;
  [[nodiscard]] bool operator()(std::string_view left, std::string_view right) const;
};

/// One request, whole, free of the HTTP library that received it.
struct Request {
  std::string method = {};
  std::string path = {};  // without the query
  std::map<std::string, std::string, HeaderOrder> headers = {};
  std::string body = {};

  /// The header's value, empty when it was not sent.
  [[nodiscard]] std::string header(std::string_view name) const;

  /// The value of the first cookie of that name (RFC 6265, 4.2).
  [[nodiscard]] std::optional<std::string> cookie(std::string_view name) const;

  /// The first field of that name in a URL-encoded form body, decoded; broken escapes stay as sent.
  [[nodiscard]] std::optional<std::string> formField(std::string_view name) const;
};

/// How much of an answer reaches the client before the connection is cut.
enum class Cut { None, WithoutAnswer, MidBody };

struct Answer {
  int status = 200;
  std::string contentType = {};
  std::string body = {};
  std::vector<std::pair<std::string, std::string>> headers = {};
  Cut cut = Cut::None;
};

/// Called from several threads at once. An exception becomes a 500 answer.
using Handler = std::function<Answer(const Request&)>;

/// A JSON answer. Bytes that are not UTF-8 come out as U+FFFD.
[[nodiscard]] Answer jsonAnswer(int status, const nlohmann::json& body);

/// {"error": text}
[[nodiscard]] Answer errorAnswer(int status, std::string_view text);

/// 303 See Other: the client goes on with GET.
[[nodiscard]] Answer seeOther(std::string_view location);

}  // namespace notewick::service
