#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/records.h"

namespace notewick {

/// Finds participants by their full names in text. A participant is recognised by "first last" or
/// "last, first", anywhere in the text and in any letter case. Horizontal blanks around a stored
/// name are ignored; a participant whose first or last name is blank never matches. Characters are
/// grapheme clusters (Unicode Annex 29) compared by canonical equivalence (Annex 15): "Rene" is not
/// in "René", however the accent is written. Text is lower-cased code point by code point
/// (SpecialCasing.txt without its conditional mappings), so that a name is found wherever it stands
/// in a longer text.
///
/// A matcher is built once for a list and never changes. A search takes time in proportion to the
/// text, not to the number of participants. Safe to use from any thread.
class NameMatcher {
 public:
  NameMatcher() : NameMatcher(std::vector<Participant>()) {}
  explicit NameMatcher(const std::vector<Participant>& participants);

  /// The indices of the participants whose names occur in `text`, in ascending order, each once.
  /// Invalid UTF-8 in the text counts as U+FFFD and matches nothing else.
  [[nodiscard]] std::vector<std::size_t> match(std::string_view text) const;

 private:
  using StateId = std::uint32_t;
  struct Candidate;
  using Candidates = std::span<const Candidate>;

  /// A state of the automaton (Aho and Corasick, 1975) over the bytes of all candidates. States are
  /// numbered breadth first, so that the children of one stand side by side: they end where those
  /// of the next state begin.
  struct State {
    StateId firstChild;
    StateId fallback;  ///< the longest proper suffix that is a state
  };
  struct Ending {
    StateId state;
    std::uint32_t length;  ///< of the candidate, in bytes
    std::uint32_t participant;
  };
  using Row = std::array<StateId, 256>;

  void addStates(const std::vector<Candidate>& sorted);
  /// The state of the candidates that begin with the `depth` bytes which lead to it.
  void addState(Candidates candidates, std::uint32_t depth, std::vector<Candidates>& children);
  void linkFallbacks();
  void fillRows();
  [[nodiscard]] StateId child(StateId state, unsigned char byte) const;
  [[nodiscard]] StateId step(StateId state, unsigned char byte) const;
  void collect(std::string_view text, std::size_t end, StateId state,
               std::vector<std::size_t>& found) const;

  std::vector<State> states_;  ///< the root first; one more behind the last
  std::vector<bool> reports_;  ///< a candidate ends at the state, or at one it falls back to
  std::vector<unsigned char> labels_;  ///< the byte that leads to each state
  std::vector<Ending> endings_;        ///< ascending by state
  std::vector<Row> rows_;  ///< for the states nearest to the root, by byte, where to go next
};

/// The participants whose names occur in `text`, whole records in list order.
[[nodiscard]] std::vector<Participant> matchParticipants(
    std::string_view text, const std::vector<Participant>& participants);

}  // namespace notewick
