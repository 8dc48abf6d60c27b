// An answer with any status and any body is read as a whole tree of it would be, and judged by the
// service's table of failures. The first three characters are the status.
#include <algorithm>
#include <limits>

#include "client/failure_text.h"
#include "fuzz/plain_answer.h"
#include "fuzz/targets.h"

namespace notewick::fuzz {
namespace {

using Kind = VELKError::Kind;

struct {
  int first;
  int last;
  std::optional<Kind> failure;
} const TABLE[] = {
    {200, 200, std::nullopt},
    {401, 401, Kind::network},
    {429, 429, Kind::network},
    {500, 599, Kind::network},
    {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), Kind::api},
};

std::optional<Kind> failureOf(int status) {
  return std::ranges::find_if(
             TABLE, [&](const auto& row) { return row.first <= status && status <= row.last; })
      ->failure;
}

bool isBeginningOf(const std::string& shown, const std::string& words) {
  const std::string ellipsis = "…";
  return shown == words || (shown.ends_with(ellipsis) &&
                            words.starts_with(shown.substr(0, shown.size() - ellipsis.size())));
}

std::string asciiLowerCased(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

void judge(int status, const AnswerBody& body) {
  const auto result = resultOf(status, body);
  const auto failure = failureOf(status);
  require(result.has_value() == !failure, "only 200 is taken");
  if (result) return require(*result == body, "what was taken is passed on");
  require(result.error().kind() == *failure, "the failure is the one of the table");
  const auto& text = result.error().message();
  require(text.size() <= 8 * 1024 + 3, "a failure's text is bounded");
  const bool tellsTheServicesWords = body.error && status != 401;
  require(!tellsTheServicesWords || isBeginningOf(text, *body.error),
          "the words are the service's");
}

}  // namespace

void answers(std::string_view bytes) {
  if (bytes.size() < 3) return;
  const int status = (bytes[0] - '0') * 100 + (bytes[1] - '0') * 10 + (bytes[2] - '0');
  const std::string text(bytes.substr(3));
  const AnswerBody body = readAnswer(text);
  require(body == plainlyRead(text), "an answer is read as its tree would be");
  judge(status, body);
  const bool blames =
      body.error &&
      asciiLowerCased(*body.error).find("invalid email or password") != std::string::npos;
  require(blamesCredentials(body) == blames, "the credentials are blamed by these words only");
}

}  // namespace notewick::fuzz
