// Window titles hold any bytes. The index finds the names in them that two plain searches find. The
// first line is the title, each other line the two names of a participant, with a "/" between.
#include "detect/name_matcher.h"
#include "fuzz/targets.h"
#include "model/bounded_text.h"
#include "model/unicode.h"
#include "tests/detect/plain_matcher.h"

namespace notewick::fuzz {
namespace {

Participant participantIn(const std::string& line) {
  const std::string valid = validUtf8(line);
  const auto slash = std::min(valid.find('/'), valid.size());
  return {"", valid.substr(0, slash), valid.substr(std::min(slash + 1, valid.size()))};
}

void fold(const std::string& title) {
  const std::string text = folded(title);
  require(folded(text) == text, "folded text stays as it is");
  require(isClusterBoundary(text, text.size()), "a text ends with a cluster");
  const std::string valid = validUtf8(title);
  require(validUtf8(valid) == valid, "repaired text stays as it is");
  require(composed(composed(valid)) == composed(valid), "composed text stays as it is");
}

void bound(const std::string& title) {
  const std::string shown = boundedText(title, {8, 24});
  if (shown == title) return;
  require(shown.ends_with("…"), "a cut is marked");
  const std::string kept = shown.substr(0, shown.size() - 3);
  require(kept.size() <= 24 && title.starts_with(kept), "a cut text is the beginning");
}

}  // namespace

void titles(std::string_view bytes) {
  const auto lines = parts(bytes, '\n');
  const std::string& title = lines.front();
  fold(title);
  bound(title);
  std::vector<Participant> participants;
  for (std::size_t i = 1; i < lines.size(); ++i) participants.push_back(participantIn(lines[i]));
  require(NameMatcher(participants).match(title) == plainMatch(validUtf8(title), participants),
          "the index finds what a plain search finds");
}

}  // namespace notewick::fuzz
