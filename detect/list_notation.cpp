#include "detect/list_notation.h"

namespace notewick {

std::string listNotation(const std::vector<std::string>& items) {
  std::string text = "[";
  for (const std::string& item : items) {
    text += text.size() > 1 ? ", \"" : "\"";
    for (const char character : item) {
      if (character == '"' || character == '\\') text += '\\';
      text += character;
    }
    text += '"';
  }
  return text + "]";
}

}  // namespace notewick
