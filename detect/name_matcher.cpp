#include "detect/name_matcher.h"

#include <algorithm>
#include <queue>

#include "model/unicode.h"

namespace notewick {

NameMatcher::NameMatcher(const std::vector<Participant>& participants)
    : participantCount_(participants.size()) {
  for (std::size_t index = 0; index < participants.size(); ++index) {
    const std::string first = trimmedOfBlanks(lowerCased(participants[index].firstName));
    const std::string last = trimmedOfBlanks(lowerCased(participants[index].lastName));
    if (first.empty() || last.empty()) continue;
    addCandidate(folded(first + " " + last).bytes, index);
    addCandidate(folded(last + ", " + first).bytes, index);
  }
  linkFallbacks();
}

void NameMatcher::addCandidate(std::string_view candidate, std::size_t participant) {
  std::uint32_t state = 0;
  for (const char character : candidate) {
    const auto byte = static_cast<unsigned char>(character);
    std::uint32_t next = child(state, byte);
    if (next == 0) {
      next = static_cast<std::uint32_t>(states_.size());
      states_[state].edges.push_back({byte, next});
      if (state == 0) roots_[byte] = next;
      const std::uint32_t depth = states_[state].depth + 1;
      states_.emplace_back().depth = depth;
    }
    state = next;
  }
  states_[state].ends.push_back(participant);
}

void NameMatcher::linkFallbacks() {
  std::queue<std::uint32_t> breadthFirst({0});
  for (; !breadthFirst.empty(); breadthFirst.pop()) {
    const std::uint32_t parent = breadthFirst.front();
    for (const auto [byte, state] : states_[parent].edges) {
      const std::uint32_t fallback = parent == 0 ? 0 : step(states_[parent].fallback, byte);
      states_[state].fallback = fallback;
      states_[state].nextEnding =
          states_[fallback].ends.empty() ? states_[fallback].nextEnding : fallback;
      breadthFirst.push(state);
    }
  }
}

std::uint32_t NameMatcher::child(std::uint32_t state, unsigned char byte) const {
  if (state == 0) return roots_[byte];
  for (const Edge& edge : states_[state].edges) {
    if (edge.byte == byte) return edge.target;
  }
  return 0;
}

std::uint32_t NameMatcher::step(std::uint32_t state, unsigned char byte) const {
  for (;;) {
    const std::uint32_t next = child(state, byte);
    if (next != 0 || state == 0) return next;
    state = states_[state].fallback;
  }
}

std::vector<std::size_t> NameMatcher::match(std::string_view text) const {
  std::vector<bool> found(participantCount_, false);
  const FoldedText haystack = folded(text);
  std::uint32_t state = 0;
  for (std::size_t place = 0; place < haystack.bytes.size(); ++place) {
    state = step(state, static_cast<unsigned char>(haystack.bytes[place]));
    const std::size_t end = place + 1;
    if (!haystack.boundaries[end]) continue;
    const std::uint32_t longest = states_[state].ends.empty() ? states_[state].nextEnding : state;
    for (std::uint32_t ending = longest; ending != 0; ending = states_[ending].nextEnding) {
      if (!haystack.boundaries[end - states_[ending].depth]) continue;
      for (const std::size_t participant : states_[ending].ends) found[participant] = true;
    }
  }
  std::vector<std::size_t> matches;
  for (std::size_t index = 0; index < found.size(); ++index) {
    if (found[index]) matches.push_back(index);
  }
  return matches;
}

std::vector<Participant> matchParticipants(std::string_view text,
                                           const std::vector<Participant>& participants) {
  std::vector<Participant> matched;
  for (const std::size_t index : NameMatcher(participants).match(text)) {
    matched.push_back(participants[index]);
  }
  return matched;
}

}  // namespace notewick
