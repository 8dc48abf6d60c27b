#include "platform/linux/titles/title_text.h"

#include <utf8proc.h>

#include <array>

namespace notewick {
namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;

void append(std::string& text, char32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes.data());
  text.append(bytes.begin(), bytes.begin() + length);
}

std::string fromLatin1(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) append(text, static_cast<unsigned char>(byte));
  return text;
}

/// Reads ISO 2022 as the X Consortium's Compound Text Encoding uses it.
class CompoundTextReader {
 public:
  explicit CompoundTextReader(std::string_view bytes) : rest_(bytes) {}

  std::string read() {
    while (!rest_.empty()) {
      if (rest_.front() == ESCAPE) {
        readEscape();
      } else {
        readSegment();
      }
    }
    return std::move(text_);
  }

 private:
  static constexpr char ESCAPE = '\x1b';
  static constexpr std::string_view LATIN1_RIGHT = "-A";
  static constexpr std::string_view ASCII_LEFT = "(B";
  static constexpr std::string_view UTF8_BEGINS = "%G";
  static constexpr std::string_view UTF8_ENDS = "%@";

  enum class Left { ascii, other };
  enum class Right { latin1, utf8, other };

  void readEscape() {
    rest_.remove_prefix(1);
    std::size_t length = 0;
    while (length < rest_.size() && rest_[length] >= 0x20 && rest_[length] <= 0x2f) ++length;
    const auto sequence = rest_.substr(0, length + 1);
    rest_.remove_prefix(sequence.size());
    if (!sequence.empty()) designate(sequence);
  }

  void designate(std::string_view sequence) {
    if (sequence == UTF8_BEGINS) {
      right_ = Right::utf8;
    } else if (sequence == UTF8_ENDS || sequence == LATIN1_RIGHT) {
      right_ = Right::latin1;
    } else if (sequence == ASCII_LEFT) {
      left_ = Left::ascii;
    } else if (sequence.starts_with('(') || sequence.starts_with("$(")) {
      left_ = Left::other;
    } else {
      right_ = Right::other;
    }
  }

  void readSegment() {
    const auto segment = rest_.substr(0, rest_.find(ESCAPE));
    rest_.remove_prefix(segment.size());
    if (right_ == Right::utf8) {
      text_ += segment;
      return;
    }
    for (const char byte : segment) append(text_, codePoint(static_cast<unsigned char>(byte)));
  }

  [[nodiscard]] char32_t codePoint(unsigned char byte) const {
    const bool isReadable = byte < 0x80 ? left_ == Left::ascii : right_ == Right::latin1;
    return isReadable ? byte : REPLACEMENT;
  }

  std::string_view rest_;
  std::string text_;
  Left left_ = Left::ascii;
  Right right_ = Right::latin1;
};

}  // namespace

std::string decodedText(std::string_view bytes, TextEncoding encoding) {
  const auto text = bytes.substr(0, bytes.find('\0'));
  switch (encoding) {
    case TextEncoding::latin1:
      return fromLatin1(text);
    case TextEncoding::compoundText:
      return CompoundTextReader(text).read();
    case TextEncoding::utf8:
      break;
  }
  return std::string(text);
}

}  // namespace notewick
