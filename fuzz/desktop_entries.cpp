// Desktop entries come from any package, and from any program of the user. The first line is what a
// window calls itself, the rest is the entry of that name.
#include "fuzz/targets.h"
#include "fuzz/temporary_folder.h"
#include "platform/linux/titles/application_names.h"

namespace notewick::fuzz {

void desktop_entries(std::string_view bytes) {
  static const TemporaryFolder folder;
  const auto end = std::min(bytes.find('\n'), bytes.size());
  const auto entry = bytes.substr(std::min(end + 1, bytes.size()));
  const std::string stranger(bytes.substr(0, end));
  folder.put("known.desktop", entry);
  ApplicationNames names({folder.path()}, {"de_CH", "de"});
  const auto name = names.nameOf("known");
  require(!name.empty(), "every program has a name");
  require(name.find('\n') == std::string::npos, "a name is one line");
  require(name == "known" || ("\n" + std::string(entry)).find(name) != std::string::npos,
          "a name stands in the entry");
  require(names.nameOf("known") == name, "a program is looked up once");
  const auto other = names.nameOf(stranger);
  const bool isKnown = other == name || other == stranger || other == OWN_NAME;
  require(isKnown, "a program without an entry has the name that it gives itself");
}

}  // namespace notewick::fuzz
