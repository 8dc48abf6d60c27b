// An answer arrives in lines and pieces of any size. It is taken as a reader of the whole would
// take it: informational heads are passed over, the first other head counts. The first byte says
// whether a proxy answers first, and how the body is cut into pieces.
#include <regex>

#include "fuzz/targets.h"
#include "platform/linux/http/http_answer.h"

namespace notewick::fuzz {
namespace {

constexpr std::string_view HEAD_END = "\r\n\r\n";
const std::regex BARE_LINE_FEED("[^\\r]\\n");

std::optional<int> plainStatus(std::string_view head) {
  static const std::regex line("HTTP/1\\.[0-9] ([1-9][0-9]{2})[ \\r\\n]");
  std::match_results<std::string_view::const_iterator> found;
  constexpr auto AT_START = std::regex_constants::match_continuous;
  if (!std::regex_search(head.begin(), head.end(), found, line, AT_START)) return std::nullopt;
  return std::stoi(found[1]);
}

/// The head that counts, by the plainest reading of one that no proxy sent.
std::optional<int> plainlyTaken(std::string_view stream) {
  for (;;) {
    const auto end = stream.find(HEAD_END);
    if (end == std::string_view::npos) return std::nullopt;
    const auto status = plainStatus(stream.substr(0, end + 2));
    if (!status || *status == 101) return std::nullopt;
    if (*status >= 200) return status;
    stream.remove_prefix(end + HEAD_END.size());
  }
}

/// Hands over line by line, as curl does, until the head of the answer is whole.
bool takeHeads(HttpAnswer& answer, std::string_view& stream) {
  bool isTaken = true;
  while (isTaken && !stream.empty() && !answer.outcome(std::nullopt)) {
    const auto end = stream.find('\n');
    if (end == std::string_view::npos) break;
    isTaken = answer.takeLine(stream.substr(0, end + 1));
    stream.remove_prefix(end + 1);
  }
  return isTaken;
}

}  // namespace

void http_answer(std::string_view bytes) {
  if (bytes.empty()) return;
  const bool hasProxy = (bytes[0] & 1) != 0;
  const auto pieceSize = static_cast<std::size_t>(static_cast<unsigned char>(bytes[0]) / 2 + 1);
  std::string_view stream = bytes.substr(1);
  const auto expected = plainlyTaken(stream);
  HttpAnswer answer(hasProxy ? FirstHead::proxy : FirstHead::service);
  const bool isTaken = takeHeads(answer, stream);
  const std::string body(stream);
  while (isTaken && answer.outcome(std::nullopt) && !stream.empty()) {
    require(answer.takeBody(stream.substr(0, pieceSize)), "a small body is taken");
    stream.remove_prefix(std::min(pieceSize, stream.size()));
  }
  const auto outcome = answer.outcome(std::nullopt);
  require(!outcome || (*outcome->statusCode >= 200 && *outcome->statusCode <= 999),
          "an answer has a final status");
  require(!answer.outcome(TransportError{"lost"}), "what broke off is no answer");
  const bool hasBareLineFeeds = std::regex_search(bytes.begin(), bytes.end(), BARE_LINE_FEED);
  if (hasProxy || hasBareLineFeeds) return;
  require(outcome.has_value() == expected.has_value(), "the answer is there when its head is");
  if (!outcome) return;
  require(outcome->statusCode == expected, "the status is that of the first final head");
  require(outcome->body.value_or("") == body, "the body arrives whole");
}

}  // namespace notewick::fuzz
