#include "detect/name_matcher.h"

#include <algorithm>

#include "model/unicode.h"

namespace notewick {
namespace {

/// Most of a text is read in states near the root, where nothing needs to be looked for: a row is a
/// kilobyte, and these stay in the processor's cache.
constexpr std::size_t MOST_ROWS = 128;

}  // namespace

/// One of the two forms of a participant's name, folded.
struct NameMatcher::Candidate {
  std::string bytes;
  std::uint32_t participant;

  auto operator<=>(const Candidate&) const = default;
};

NameMatcher::NameMatcher(const std::vector<Participant>& participants) {
  std::vector<Candidate> candidates;
  candidates.reserve(2 * participants.size());
  for (std::uint32_t index = 0; index < participants.size(); ++index) {
    const std::string first = folded(trimmedOfBlanks(participants[index].firstName));
    const std::string last = folded(trimmedOfBlanks(participants[index].lastName));
    if (first.empty() || last.empty()) continue;
    candidates.push_back({first + " " + last, index});
    candidates.push_back({last + ", " + first, index});
  }
  std::ranges::sort(candidates);
  addStates(candidates);
  linkFallbacks();
  fillRows();
}

void NameMatcher::addStates(const std::vector<Candidate>& sorted) {
  std::vector<Candidates> level = {sorted};
  labels_.push_back(0);
  for (std::uint32_t depth = 0; !level.empty(); ++depth) {
    std::vector<Candidates> next;
    for (const Candidates& candidates : level) addState(candidates, depth, next);
    level = std::move(next);
  }
  states_.push_back({.firstChild = static_cast<StateId>(labels_.size()), .fallback = 0});
  states_.shrink_to_fit();
  labels_.shrink_to_fit();
}

void NameMatcher::addState(Candidates candidates, std::uint32_t depth,
                           std::vector<Candidates>& children) {
  const auto state = static_cast<StateId>(states_.size());
  states_.push_back({.firstChild = static_cast<StateId>(labels_.size()), .fallback = 0});
  reports_.push_back(false);
  while (!candidates.empty() && candidates.front().bytes.size() == depth) {
    endings_.push_back({state, depth, candidates.front().participant});
    reports_.back() = true;
    candidates = candidates.subspan(1);
  }
  while (!candidates.empty()) {
    const char byte = candidates.front().bytes[depth];
    const auto differs = [&](const Candidate& other) { return other.bytes[depth] != byte; };
    const auto end = std::ranges::find_if(candidates, differs) - candidates.begin();
    labels_.push_back(static_cast<unsigned char>(byte));
    children.push_back(candidates.first(static_cast<std::size_t>(end)));
    candidates = candidates.subspan(children.back().size());
  }
}

void NameMatcher::linkFallbacks() {
  for (StateId parent = 0; parent + 1 < states_.size(); ++parent) {
    for (StateId state = states_[parent].firstChild; state < states_[parent + 1].firstChild;
         ++state) {
      const StateId fallback = parent == 0 ? 0 : step(states_[parent].fallback, labels_[state]);
      states_[state].fallback = fallback;
      if (reports_[fallback]) reports_[state] = true;
    }
  }
}

void NameMatcher::fillRows() {
  const std::size_t count = std::min(MOST_ROWS, labels_.size());
  rows_.reserve(count);
  for (StateId state = 0; state < count; ++state) {
    Row row = state == 0 ? Row{} : rows_[states_[state].fallback];
    for (StateId next = states_[state].firstChild; next < states_[state + 1].firstChild; ++next) {
      row[labels_[next]] = next;
    }
    rows_.push_back(row);
  }
}

NameMatcher::StateId NameMatcher::child(StateId state, unsigned char byte) const {
  const StateId end = states_[state + 1].firstChild;
  for (StateId next = states_[state].firstChild; next < end; ++next) {
    if (labels_[next] == byte) return next;
  }
  return 0;
}

NameMatcher::StateId NameMatcher::step(StateId state, unsigned char byte) const {
  for (;;) {
    if (state < rows_.size()) return rows_[state][byte];
    const StateId next = child(state, byte);
    if (next != 0 || state == 0) return next;
    state = states_[state].fallback;
  }
}

std::vector<std::size_t> NameMatcher::match(std::string_view text) const {
  std::vector<std::size_t> found;
  const std::string haystack = folded(text);
  StateId state = 0;
  for (std::size_t place = 0; place < haystack.size(); ++place) {
    state = step(state, static_cast<unsigned char>(haystack[place]));
    if (reports_[state]) collect(haystack, place + 1, state, found);
  }
  std::ranges::sort(found);
  found.erase(std::ranges::unique(found).begin(), found.end());
  return found;
}

void NameMatcher::collect(std::string_view text, std::size_t end, StateId state,
                          std::vector<std::size_t>& found) const {
  if (!isClusterBoundary(text, end)) return;
  for (; reports_[state]; state = states_[state].fallback) {
    for (const Ending& ending : std::ranges::equal_range(endings_, state, {}, &Ending::state)) {
      if (isClusterBoundary(text, end - ending.length)) found.push_back(ending.participant);
    }
  }
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
