#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "client/answer_body.h"
#include "detect/name_matcher.h"

namespace notewick {
namespace {

/// Names of several languages that begin with many different letters.
std::vector<Participant> participants(std::size_t count) {
  const std::vector<std::string> first = {"Amara", "Bogdan", "Chloë",  "Dilan",  "Émile", "Fatima",
                                          "Grace", "Hannah", "Inés",   "Jürgen", "Kenji", "Lena",
                                          "Mai",   "Nguyễn", "Ömer",   "Petra",  "Quinn", "Rosa",
                                          "Sofia", "Tobias", "Ulrike", "Václav", "Wanda", "Yusuf"};
  const std::vector<std::string> last = {"Hargreave", "O'Keefe", "Müller",  "Nakamura", "Fjällräv",
                                         "Şahin",     "Baker",   "Åkesson", "Zielińska"};
  std::vector<Participant> list;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    list.push_back({number, first[i % first.size()] + number, last[i % last.size()] + number});
  }
  return list;
}

constexpr std::size_t LENGTH = 300;

/// A text of 300 characters as a sample joins it from titles, naming one participant.
std::string sampleText() {
  std::string text;
  while (text.size() < 250) text += "RE: support hours next week - Inbox | ";
  text += "Bogdan1 O'Keefe1 plan review.docx";
  text.resize(LENGTH, '.');
  return text;
}

/// 300 characters, one in six of them accented.
std::string accentedText() {
  const std::string word = "Überprüfung ";
  std::string text;
  for (std::size_t i = 0; i < LENGTH / 12; ++i) text += word;
  return text;
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

/// The largest body that is read at all, full of what nobody wants.
void ReadEmptyArrays(benchmark::State& state) {
  constexpr std::size_t LARGEST_BODY = std::size_t{8} << 20U;
  std::string text = R"({"a":[)";
  while (text.size() < LARGEST_BODY - 10) text += "[],";
  text += "[]]}";
  for (auto _ : state) benchmark::DoNotOptimize(readAnswer(text));
}
BENCHMARK(ReadEmptyArrays)->Unit(benchmark::kMillisecond);

/// Has nothing to do with the program: what stands beside it tells how fast the machine is now.
void Reference(benchmark::State& state) {
  std::array<std::minstd_rand::result_type, 256> numbers;
  for (auto _ : state) {
    std::ranges::generate(numbers, std::minstd_rand());
    std::ranges::sort(numbers);
    benchmark::DoNotOptimize(numbers);
  }
}
BENCHMARK(Reference);

}  // namespace
}  // namespace notewick

BENCHMARK_MAIN();
