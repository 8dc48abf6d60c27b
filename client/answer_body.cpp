#include "client/answer_body.h"

#include <array>
#include <string_view>
#include <utility>

#include "model/json_text.h"

namespace notewick {
namespace {

using nlohmann::json;
using Text = std::optional<std::string>;

struct TextKey {
  std::string_view key;
  Text AnswerBody::*text;
};

constexpr std::array TEXT_KEYS = {
    TextKey{"error", &AnswerBody::error},
    TextKey{"accessToken", &AnswerBody::accessToken},
    TextKey{"refreshToken", &AnswerBody::refreshToken},
    TextKey{"capturedId", &AnswerBody::capturedId},
};

/// One object of the array of participants.
struct Entry {
  Text id;
  Text firstName;
  Text lastName;
};

/// Follows the events of the JSON parser and keeps the wanted values. Every event tells the parser
/// whether to go on; one that ends the parsing leaves an answer of which nothing counts.
class AnswerReader {
 public:
  [[nodiscard]] AnswerBody body() && { return std::move(body_); }

  bool null() { return scalar(); }
  bool boolean(bool /*value*/) { return scalar(); }
  bool number_integer(json::number_integer_t value) { return number(static_cast<double>(value)); }
  bool number_unsigned(json::number_unsigned_t value) { return number(static_cast<double>(value)); }
  bool number_float(double value, const std::string& /*digits*/) { return number(value); }
  bool binary(json::binary_t& /*value*/) { return scalar(); }

  bool string(const std::string& value) {
    if (text_ != nullptr) *text_ = value;
    return scalar();
  }

  bool key(const std::string& name) {
    if (depth_ == 1) {
      topKey(name);
    } else if (depth_ == 2 && section_ == Section::user) {
      if (name == "email" && body_.user) want(body_.user->email);
    } else if (depth_ == 3 && section_ == Section::participants) {
      entryKey(name);
    }
    return true;
  }

  bool start_object(std::size_t /*unknown*/) {
    if (depth_ == 1 && section_ == Section::user) {
      body_.user.emplace();
    } else if (depth_ == 1) {
      section_ = Section::other;
    } else if (isElementOfParticipants()) {
      entry_ = {};
    }
    return descend();
  }

  bool end_object() {
    --depth_;
    if (isElementOfParticipants()) addEntry();
    return true;
  }

  bool start_array(std::size_t /*unknown*/) {
    if (depth_ == 1 && section_ == Section::participants) {
      body_.participants.emplace();
    } else if (depth_ == 1) {
      section_ = Section::other;
    } else if (isElementOfParticipants()) {
      refuseParticipants();
    }
    return descend();
  }

  bool end_array() {
    --depth_;
    return true;
  }

  bool parse_error(std::size_t /*place*/, const std::string& /*token*/, const json::exception&) {
    return false;
  }

 private:
  /// The value of the top level that the parser is in, where it is of the wanted type.
  enum class Section { other, user, participants };

  void topKey(std::string_view name) {
    section_ = Section::other;
    for (const auto& [key, text] : TEXT_KEYS) {
      if (name == key) want(body_.*text);
    }
    if (name == "expiresAt") {
      body_.expiresAt.reset();
      number_ = &body_.expiresAt;
    } else if (name == "user") {
      body_.user.reset();
      section_ = Section::user;
    } else if (name == "participants") {
      body_.participants.reset();
      section_ = Section::participants;
    }
  }

  void entryKey(std::string_view name) {
    if (name == "id") want(entry_.id);
    if (name == "first_name") want(entry_.firstName);
    if (name == "last_name") want(entry_.lastName);
  }

  /// The next value, if it is a text, goes to `text`; an earlier one of the same key is forgotten.
  void want(Text& text) {
    text.reset();
    text_ = &text;
  }

  void wantNothing() {
    text_ = nullptr;
    number_ = nullptr;
  }

  bool number(double value) {
    if (number_ != nullptr) *number_ = value;
    return scalar();
  }

  bool scalar() {
    wantNothing();
    if (isElementOfParticipants()) refuseParticipants();
    return true;
  }

  bool descend() {
    wantNothing();
    return depth_++ < DEEPEST_NESTING;
  }

  [[nodiscard]] bool isElementOfParticipants() const {
    return depth_ == 2 && section_ == Section::participants;
  }

  void refuseParticipants() {
    body_.participants.reset();
    section_ = Section::other;
  }

  void addEntry() {
    if (!body_.participants || !entry_.id || !entry_.firstName || !entry_.lastName) return;
    body_.participants->push_back(
        {std::move(*entry_.id), std::move(*entry_.firstName), std::move(*entry_.lastName)});
  }

  AnswerBody body_;
  Entry entry_;
  Section section_ = Section::other;
  std::size_t depth_ = 0;  ///< objects and arrays that are open
  Text* text_ = nullptr;
  std::optional<double>* number_ = nullptr;
};

bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// Leaves one blank of each run of blanks between tokens. The parser keeps the run in front of a
/// token that is wrong and tells it, escaped, in the text of the error: 8 MB of line feeds would
/// take 300 MB and seconds.
void shrinkBlanks(std::string& text) {
  std::size_t kept = 0;
  bool quoted = false;
  bool escaped = false;
  char previous = '\0';
  for (const char character : text) {
    if (quoted || !isBlank(character) || !isBlank(previous)) text[kept++] = character;
    if (character == '"' && !escaped) quoted = !quoted;
    escaped = quoted && character == '\\' && !escaped;
    previous = character;
  }
  text.resize(kept);
}

}  // namespace

AnswerBody readAnswer(std::string body) {
  if (body.find('\0') != std::string::npos) return {};  // would end it silently
  shrinkBlanks(body);
  AnswerReader reader;
  const bool isJson = json::sax_parse(body, &reader);
  return isJson ? std::move(reader).body() : AnswerBody();
}

}  // namespace notewick
