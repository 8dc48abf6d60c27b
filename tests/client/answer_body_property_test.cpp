#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/client/plain_answer.h"

namespace notewick {
namespace {

constexpr unsigned SEED = 20240502;
constexpr int CASES = 3'000;

/// Answers made of the wanted keys, each of them anywhere and perhaps doubled, with values of every
/// type; some are damaged.
class Generator {
 public:
  [[nodiscard]] std::string answer() {
    std::string text = oneIn(20) ? value(0) : object(0);
    if (oneIn(20)) text = "\xEF\xBB\xBF" + text;
    if (oneIn(8)) text.resize(upTo(text.size() + 1));
    if (oneIn(8) && !text.empty()) text[upTo(text.size())] = pick(BYTES);
    return text;
  }

 private:
  static constexpr std::size_t DEEPEST = 4;
  inline static const std::vector<std::string> KEYS = {
      "error",        "accessToken", "refreshToken", "expiresAt", "user",  "participants",
      "participants", "capturedId",  "email",        "id",        "other", "last_name"};
  inline static const std::vector<std::string> SCALARS = {
      "null", "true", "-7", "12.5e3", "1e400", R"("x")", R"("a  \" \\")", R"("\ud83d")"};
  inline static const std::vector<char> BYTES = {'{', '}', '[', ']', '"',  '\\',
                                                 ',', ':', ' ', '1', '\0', '\xC3'};

  [[nodiscard]] std::string value(std::size_t depth) {
    if (depth >= DEEPEST || oneIn(2)) return pick(SCALARS);
    return oneIn(3) ? list('[', ']', [&] { return value(depth + 1); }) : object(depth);
  }

  [[nodiscard]] std::string object(std::size_t depth) {
    return list('{', '}', [&] {
      const std::string key = pick(KEYS);
      return '"' + key + "\":" + blanks() + valueFor(key, depth + 1);
    });
  }

  /// Mostly of the type that is wanted there.
  [[nodiscard]] std::string valueFor(const std::string& key, std::size_t depth) {
    if (depth >= DEEPEST || oneIn(4)) return value(depth);
    if (key == "participants") return list('[', ']', [&] { return participant(depth); });
    if (key == "user") return object(depth);
    return key == "expiresAt" ? "7" : '"' + key + std::to_string(upTo(10)) + '"';
  }

  [[nodiscard]] std::string participant(std::size_t depth) {
    if (oneIn(20)) return value(depth);
    const std::string more = object(depth);
    return R"({"id":"1","first_name":"A","last_name":"B")" +
           (oneIn(2) || more.size() < 5 ? "}" : "," + more.substr(1));
  }

  /// Up to four parts between brackets, with blanks around some of them.
  template <class Part>
  [[nodiscard]] std::string list(char open, char close, Part part) {
    std::string text(1, open);
    for (auto count = upTo(5); count > 0; --count)
      text += blanks() + part() + (count > 1 ? "," : "");
    return text + blanks() + close;
  }

  [[nodiscard]] std::string blanks() {
    return oneIn(8) ? pick<std::string>({" ", " \n", "\t \r"}) : "";
  }

  template <class T>
  [[nodiscard]] T pick(const std::vector<T>& from) {
    return from[upTo(from.size())];
  }
  [[nodiscard]] bool oneIn(std::size_t count) { return upTo(count) == 0; }
  [[nodiscard]] std::size_t upTo(std::size_t limit) { return random_() % limit; }

  std::mt19937 random_{SEED};
};

TEST(AnswerBodyProperty, ReadsWhatIsFoundInAWholeTree) {
  Generator generator;
  int withSomething = 0;
  int withParticipants = 0;
  for (int number = 0; number < CASES; ++number) {
    const std::string text = generator.answer();
    const AnswerBody expected = plainlyRead(text);
    ASSERT_TRUE(readAnswer(text) == expected) << "case " << number << "\n"
                                              << testing::PrintToString(text);
    withSomething += expected == AnswerBody() ? 0 : 1;
    withParticipants += expected.participants && !expected.participants->empty() ? 1 : 0;
  }
  EXPECT_GT(withSomething, CASES / 4) << "the cases hardly ever hold anything";
  EXPECT_LT(withSomething, CASES * 3 / 4) << "the cases hardly ever hold nothing";
  EXPECT_GT(withParticipants, CASES / 20) << "the cases hardly ever hold participants";
}

}  // namespace
}  // namespace notewick
