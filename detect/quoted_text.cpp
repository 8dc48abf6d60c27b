#include "detect/quoted_text.h"

namespace notewick {

std::string quotedText(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + '"';
}

std::string listNotation(const std::vector<std::string>& items) {
  std::string text = "[";
  for (const std::string& item : items) {
    if (text.size() > 1) text += ", ";
    text += quotedText(item);
  }
  return text + "]";
}

}  // namespace notewick
