#include "doctor/finding.h"

#include <algorithm>

namespace notewick {

std::string lineOf(std::string_view check, const Finding& finding) {
  std::string line = finding.ok ? "ok    " : "todo  ";
  line.append(check).append(": ").append(finding.text);
  std::ranges::replace_if(
      line, [](char each) { return (each >= '\0' && each < ' ') || each == '\x7F'; }, ' ');
  return line;
}

}  // namespace notewick
