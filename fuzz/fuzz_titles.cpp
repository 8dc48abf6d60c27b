// Window titles hold any bytes; the name of a participant made of the title's own characters is
// found in it.
#include <cstdlib>

#include "detect/name_matcher.h"
#include "model/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string title(reinterpret_cast<const char*>(data), size);
  const std::string text = notewick::folded(title);
  if (notewick::folded(text) != text) std::abort();
  if (!notewick::isClusterBoundary(text, text.size())) std::abort();
  const std::vector<notewick::Participant> participants = {
      {"1", "Tobias", "Hargreave"}, {"2", "Ren\u00e9", "M\u00fcller"}, {"3", title, title}};
  const auto matches = notewick::matchParticipants("Hargreave, Tobias | " + title, participants);
  if (matches.empty() || matches.front().id != "1") std::abort();
  return 0;
}
