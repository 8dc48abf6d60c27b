#include "platform/linux/http/http_answer.h"

#include <algorithm>
#include <utility>

#include "platform/linux/http/http_errors.h"

namespace notewick {
namespace {

constexpr int SWITCHING_PROTOCOLS = 101;
constexpr int PROXY_AUTHENTICATION_REQUIRED = 407;

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

/// The status of "HTTP/1.x NNN" with any reason, or none, behind it.
std::optional<int> statusOf(std::string_view line) {
  constexpr std::string_view VERSION = "HTTP/1.";
  constexpr std::size_t END = VERSION.size() + 5;
  if (!line.starts_with(VERSION) || line.size() <= END) return std::nullopt;
  const std::string_view code = line.substr(END - 3, 3);
  const bool isWhole = isDigit(line[VERSION.size()]) && line[VERSION.size() + 1] == ' ' &&
                       std::ranges::all_of(code, isDigit) &&
                       std::string_view(" \r\n").find(line[END]) != std::string_view::npos;
  if (!isWhole || code < "100") return std::nullopt;
  return (code[0] - '0') * 100 + (code[1] - '0') * 10 + (code[2] - '0');
}

bool isEmpty(std::string_view line) {
  return line == "\r\n" || line == "\n";
}

}  // namespace

bool HttpAnswer::takeLine(std::string_view line) {
  headSize_ += line.size();
  if (headSize_ > (proxyIsNext_ ? LARGEST_PROXY_HEAD : LARGEST_HEAD))
    return refuse(http_error::TOO_LARGE);
  if (part_ == Part::statusLine) return takeStatusLine(line);
  return part_ == Part::fields && isEmpty(line) ? endHead() : true;
}

bool HttpAnswer::takeStatusLine(std::string_view line) {
  const auto status = statusOf(line);
  if (!status || *status == SWITCHING_PROTOCOLS) return refuse(http_error::NOT_UNDERSTOOD);
  status_ = *status;
  part_ = Part::fields;
  return true;
}

bool HttpAnswer::endHead() {
  if (status_ < 200) {
    part_ = Part::statusLine;
    return true;
  }
  if (!proxyIsNext_) {
    part_ = Part::rest;
    return true;
  }
  if (status_ == PROXY_AUTHENTICATION_REQUIRED) return refuse(http_error::PROXY_PASSWORD);
  if (status_ > 299) return refuse(http_error::PROXY_REFUSED);
  proxyIsNext_ = false;
  headSize_ = 0;
  part_ = Part::statusLine;
  return true;
}

bool HttpAnswer::takeBody(std::string_view piece) {
  if (piece.size() > LARGEST_BODY - body_.size()) {
    leaveBodyOut();
    return false;
  }
  body_ += piece;
  return true;
}

void HttpAnswer::leaveBodyOut() {
  bodyIsLeftOut_ = true;
  std::string().swap(body_);
}

bool HttpAnswer::refuse(const char* description) {
  refusal_ = description;
  return false;
}

HttpOutcome HttpAnswer::outcome(const std::optional<TransportError>& failure) const& {
  return HttpAnswer(*this).outcome(failure);
}

HttpOutcome HttpAnswer::outcome(const std::optional<TransportError>& failure) && {
  if (refusal_ != nullptr) return tl::unexpected(TransportError{refusal_});
  if (failure && !bodyIsLeftOut_) return tl::unexpected(*failure);
  const bool isAnswered = part_ == Part::rest || (bodyIsLeftOut_ && status_ >= 200);
  if (!isAnswered) return tl::unexpected(TransportError{http_error::LOST});
  HttpResponse response;
  response.statusCode = status_;
  if (!body_.empty()) response.body = std::move(body_);
  return response;
}

}  // namespace notewick
