#include <gtest/gtest.h>

#include <random>

#include "detect/name_matcher.h"
#include "tests/detect/plain_matcher.h"

namespace notewick {
namespace {

constexpr unsigned SEED = 20240502;
constexpr int LISTS = 25'000;
constexpr int TEXTS_A_LIST = 4;

/// Pieces of names and texts, script by script. There are few of them, so that names often share
/// parts, overlap, or nearly match.
const std::vector<std::vector<std::string>> ALPHABETS = {
    {"a", "A", "b", "B", "ab", " ", ", ", "'", "-", "\t", "\n"},
    {"e", "\u00e9", "e\u0301", "E\u0301", "\u1EC7", "e\u0323\u0302", "e\u0302\u0323", "\u0301"},
    {"i", "I", "\u0130", "\u0131", "I\u0307", "s", "S", "\u00df", "\u1E9E", "ss"},
    {"\u03C3", "\u03C2", "\u03A3", "\u03AC", "\u0386", "\u03B1\u0301", "\u1F80", "\u1F88"},
    {"\u0438", "\u0419", "\u0439", "\u0438\u0306", "\u0401", "\u0435\u0308"},
    {"\uD558", "\uD55C", "\u1112", "\u1161", "\u11AB", "\u1112\u1161", "\u1112\u1161\u11AB"},
    {"\u0623", "\u0627\u0654", "\u0627", "\u064A", "\u064C", "\u0640"},
    {"\u0928", "\u093F", "\u0928\u093F", "\u0915\u093C", "\u0958", "\u094D"},
    {"\U0001F469", "\u200D", "\U0001F467", "\uFE0F", "\U0001F3FD", "\U0001F1E9", "\U0001F1EA"},
    {"\u3000", "\u00a0", "\u200B", "\r\n", "\uFFFD", "\U00010400", "\u212B", "\u00C5"},
};

class Generator {
 public:
  [[nodiscard]] std::vector<Participant> participants() {
    alphabet_ = &pick(ALPHABETS);
    std::vector<Participant> list(1 + upTo(4));
    for (auto& participant : list) participant = {"", name(), name()};
    return list;
  }

  /// Names of the list in both orders, whole or cut, and other pieces between them.
  [[nodiscard]] std::string text(const std::vector<Participant>& list) {
    std::string made;
    for (auto count = upTo(6); count > 0; --count) {
      const auto& [id, first, last] = pick(list);
      made += pick(
          std::vector{first + " " + last, last + ", " + first, first + " ", ", " + first, piece()});
    }
    return made;
  }

  [[nodiscard]] std::size_t upTo(std::size_t limit) { return random_() % limit; }

 private:
  [[nodiscard]] std::string name() {
    std::string made;
    for (auto count = upTo(4); count > 0; --count) made += piece();
    return made;
  }

  [[nodiscard]] std::string piece() { return pick(upTo(8) == 0 ? pick(ALPHABETS) : *alphabet_); }

  template <class T>
  [[nodiscard]] const T& pick(const std::vector<T>& from) {
    return from[upTo(from.size())];
  }

  std::mt19937 random_{SEED};
  const std::vector<std::string>* alphabet_ = &ALPHABETS.front();
};

std::string described(const std::string& text, const std::vector<Participant>& list) {
  auto lines = "text " + testing::PrintToString(text);
  for (const auto& participant : list)
    lines += "\nname " + testing::PrintToString(participant.firstName) + " / " +
             testing::PrintToString(participant.lastName);
  return lines;
}

TEST(NameMatcherProperty, TheIndexFindsWhatAPlainSearchFinds) {
  Generator generator;
  std::size_t found = 0;
  std::size_t missed = 0;
  for (int number = 0; number < LISTS; ++number) {
    const auto list = generator.participants();
    const NameMatcher matcher(list);
    for (int each = 0; each < TEXTS_A_LIST; ++each) {
      const auto before = generator.text(list);
      const auto after = generator.text(list);
      const bool damaged = generator.upTo(10) == 0;
      const auto expected = plainMatch(before + (damaged ? "\uFFFD" : "") + after, list);
      const auto text = before + (damaged ? "\xFF" : "") + after;
      ASSERT_EQ(matcher.match(text), expected) << described(text, list);
      found += expected.size();
      missed += list.size() - expected.size();
    }
  }
  EXPECT_GT(found, 10'000u) << "the cases hardly ever match";
  EXPECT_GT(missed, 10'000u) << "the cases hardly ever miss";
}

}  // namespace
}  // namespace notewick
