#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "client/answer_body.h"
#include "tests/client/plain_answer.h"

namespace notewick {
namespace {

constexpr unsigned SEED = 20240502;
constexpr int CASES = 40'000;

/// Answers made of the wanted keys, each of them anywhere, with values of every type.
class Generator {
 public:
  /// Most are whole; some are cut, changed in a byte, or nested to the limit.
  [[nodiscard]] std::string answer() {
    std::string text = blanks() + (upTo(20) == 0 ? value(0) : object(0)) + blanks();
    if (upTo(20) == 0) text = "\xEF\xBB\xBF" + text;
    if (upTo(20) == 0) text = nested(text);
    if (upTo(8) == 0) text.resize(upTo(text.size() + 1));
    if (upTo(8) == 0 && !text.empty()) text[upTo(text.size())] = pick(BYTES);
    return text;
  }

 private:
  static constexpr std::size_t DEEPEST = 5;
  inline static const std::vector<std::string> KEYS = {
      "error",        "accessToken", "refreshToken", "expiresAt", "user", "participants",
      "participants", "capturedId",  "email",        "id",        "id",   "first_name",
      "last_name",    "other",       "Error",        ""};
  inline static const std::vector<std::string> SCALARS = {"null",
                                                          "true",
                                                          "false",
                                                          "0",
                                                          "-7",
                                                          "12.5e3",
                                                          "18446744073709551615",
                                                          "1e400",
                                                          "01",
                                                          R"("")",
                                                          R"("x")",
                                                          R"("a  \" \\")",
                                                          R"("\u00e9\ud83d\ude00")",
                                                          R"("\ud83d")"};
  inline static const std::vector<char> BYTES = {'{', '}', '[', ']', '"',  '\\',   ',',
                                                 ':', ' ', '1', 'x', '\0', '\xC3', '\n'};

  [[nodiscard]] std::string value(std::size_t depth) {
    const auto kind = depth < DEEPEST ? upTo(6) : 5;
    return kind < 2 ? object(depth) : kind < 3 ? array(depth) : pick(SCALARS);
  }

  [[nodiscard]] std::string object(std::size_t depth) {
    std::vector<std::string> members;
    for (auto count = upTo(7); count > 0; --count) {
      const std::string key = pick(KEYS);
      members.push_back('"' + key + '"' + blanks() + ":" + blanks() + valueFor(key, depth + 1));
    }
    return "{" + joined(members) + "}";
  }

  /// Mostly of the type that is wanted there.
  [[nodiscard]] std::string valueFor(const std::string& key, std::size_t depth) {
    if (upTo(4) == 0) return value(depth);
    if (key == "participants") return participants(depth);
    if (key == "user") return object(depth);
    if (key == "expiresAt") return std::to_string(upTo(1000));
    return '"' + key + std::to_string(upTo(10)) + '"';
  }

  [[nodiscard]] std::string participants(std::size_t depth) {
    std::vector<std::string> entries;
    for (auto count = upTo(4); count > 0; --count) {
      entries.push_back(upTo(12) == 0 ? value(depth)
                        : upTo(3) == 0
                            ? object(depth)
                            : R"({"id":"1","first_name":"A","last_name":"B")" + more(depth) + "}");
    }
    return "[" + joined(entries) + "]";
  }

  [[nodiscard]] std::string more(std::size_t depth) {
    const std::string members = object(depth);
    return upTo(2) == 0 || members == "{}" ? "" : "," + members.substr(1, members.size() - 2);
  }

  [[nodiscard]] std::string array(std::size_t depth) {
    std::vector<std::string> elements;
    for (auto count = upTo(4); count > 0; --count) elements.push_back(value(depth + 1));
    return "[" + joined(elements) + "]";
  }

  /// The answer in front of a value that reaches the deepest level, or one beyond.
  [[nodiscard]] std::string nested(const std::string& text) {
    const auto end = text.rfind('}');
    if (end == std::string::npos) return text;
    const std::size_t levels = 510 + upTo(3);
    const bool empty = text.find(':') == std::string::npos;
    return text.substr(0, end) + (empty ? "" : ",") + R"("a":)" + std::string(levels, '[') +
           std::string(levels, ']') + text.substr(end);
  }

  [[nodiscard]] std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : ",") + blanks() + part;
    return text + blanks();
  }

  [[nodiscard]] std::string blanks() {
    std::string text;
    for (auto count = upTo(8) == 0 ? upTo(4) : 0; count > 0; --count) text += " \t\n\r"[upTo(4)];
    return text;
  }

  template <class T>
  [[nodiscard]] T pick(const std::vector<T>& from) {
    return from[upTo(from.size())];
  }

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
    ASSERT_TRUE(readAnswer(text) == expected) << "seed " << SEED << ", case " << number << "\n"
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
