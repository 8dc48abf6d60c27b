#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "detect/name_matcher.h"

namespace notewick {
namespace {

std::vector<Participant> participants(std::size_t count) {
  const std::vector<std::string> first = {"Tobias", "Lena", "Zoë",   "Anaïs",
                                          "Jürgen", "Mai",  "Nguyễn"};
  const std::vector<std::string> last = {"Hargreave", "O'Keefe", "Müller", "Nakamura", "Fjällräv"};
  std::vector<Participant> list;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    list.push_back({number, first[i % first.size()] + number, last[i % last.size()] + number});
  }
  return list;
}

/// A text of 300 characters as a sample joins it from titles, naming one participant.
std::string sampleText() {
  std::string text;
  while (text.size() < 250) text += "RE: support hours next week - Inbox | ";
  text += "Lena1 O'Keefe1 plan review.docx";
  text.resize(300, '.');
  return text;
}

/// The same length with every third word accented.
std::string accentedText() {
  std::string text;
  for (int i = 0; i < 27; ++i) text += "Überprüfung ";
  return text.substr(0, 300);
}

void match(benchmark::State& state, const std::string& text) {
  const NameMatcher matcher(participants(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(matcher.match(text));
}

void MatchPlainText(benchmark::State& state) {
  match(state, sampleText());
}
void MatchAccentedText(benchmark::State& state) {
  match(state, accentedText());
}
BENCHMARK(MatchPlainText)->Arg(12)->Arg(200)->Arg(2000);
BENCHMARK(MatchAccentedText)->Arg(200);

void BuildMatcher(benchmark::State& state) {
  const auto list = participants(200);
  for (auto _ : state) benchmark::DoNotOptimize(NameMatcher(list));
}
BENCHMARK(BuildMatcher);

}  // namespace
}  // namespace notewick

BENCHMARK_MAIN();
