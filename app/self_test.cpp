#include "app/self_test.h"

#include <algorithm>

#include "client/base_url.h"
#include "detect/name_matcher.h"
#include "detect/quoted_text.h"

namespace notewick {

bool wantsSelfTest(const std::vector<std::string>& arguments) {
  return std::find(arguments.begin(), arguments.end(), "--selftest") != arguments.end();
}

void runSelfTest(std::ostream& out) {
  const std::vector<Participant> participants = {{"1", "Tobias", "Hargreave"},
                                                 {"2", "Lena", "O'Keefe"}};
  const std::vector<std::string> titles = {
      "RE: support hours — Tobias Hargreave - Outlook", "Hargreave, Tobias - RecordHub",
      "tobias hargreave — Messages", "Lena O'Keefe plan review.docx", "Random unrelated window"};
  for (const std::string& title : titles) {
    std::vector<std::string> names;
    for (const Participant& participant : matchParticipants(title, participants)) {
      names.push_back(participant.name());
    }
    out << "  \"" << title << "\" -> " << listNotation(names) << "\n";
  }
  out << "Base URL: " << apiBaseURL() << "\n";
}

}  // namespace notewick
