#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
  NameMatcher() = default;
  explicit NameMatcher(const std::vector<Participant>& participants);

  /// The indices of the participants whose names occur in `text`, in ascending order, each once.
  /// Invalid UTF-8 in the text counts as U+FFFD and matches nothing else.
  [[nodiscard]] std::vector<std::size_t> match(std::string_view text) const;

 private:
  struct Edge {
    unsigned char byte;
    std::uint32_t target;
  };
  /// A state of the automaton (Aho and Corasick, 1975) over the bytes of all candidates.
  struct State {
    std::vector<Edge> edges;
    std::uint32_t fallback = 0;     ///< the longest proper suffix that is a state
    std::uint32_t nextEnding = 0;   ///< the next shorter suffix at which a candidate ends; 0: none
    std::uint32_t depth = 0;        ///< bytes from the start
    std::vector<std::size_t> ends;  ///< the participants one of whose candidates ends here
  };

  void addCandidate(std::string_view candidate, std::size_t participant);
  void linkFallbacks();
  [[nodiscard]] std::uint32_t child(std::uint32_t state, unsigned char byte) const;
  [[nodiscard]] std::uint32_t step(std::uint32_t state, unsigned char byte) const;

  std::vector<State> states_ = std::vector<State>(1);
  std::array<std::uint32_t, 256> roots_{};  ///< the edges of the first state, by byte
  std::size_t participantCount_ = 0;
};

/// The participants whose names occur in `text`, whole records in list order.
[[nodiscard]] std::vector<Participant> matchParticipants(
    std::string_view text, const std::vector<Participant>& participants);

}  // namespace notewick
