#include "platform/linux/titles/application_names.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace notewick {
namespace {

using std::filesystem::path;

std::string variable(const char* name, const std::string& otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? otherwise : value;
}

std::vector<path> entryFolders() {
  const auto home = variable("XDG_DATA_HOME", variable("HOME", "") + "/.local/share");
  std::istringstream folders(home + ":" + variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
  std::vector<path> found;
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (folder.starts_with('/')) found.push_back(path(folder) / "applications");
  }
  return found;
}

/// "de_CH.UTF-8" gives "de_CH", "de".
std::vector<std::string> userLanguages() {
  auto locale = variable("LC_ALL", variable("LC_MESSAGES", variable("LANG", "")));
  locale.resize(std::min(locale.find_first_of(".@"), locale.size()));
  return {locale, locale.substr(0, locale.find('_'))};
}

std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return text;
}

constexpr std::uintmax_t LARGEST_ENTRY = 1024UL * 1024;

/// Opening a pipe would wait for its other end, and reading a device might never end.
bool isUsable(const path& entry) {
  std::error_code failed;
  return std::filesystem::is_regular_file(entry, failed) &&
         std::filesystem::file_size(entry, failed) <= LARGEST_ENTRY && !failed;
}

/// The values of the names in the entry's main group by their keys, "Name" or "Name[de]".
std::map<std::string, std::string> namesIn(std::istream& entry) {
  std::map<std::string, std::string> names;
  bool isMainGroup = false;
  for (std::string line; std::getline(entry, line);) {
    if (line.starts_with('[')) isMainGroup = line == "[Desktop Entry]";
    const auto end = line.find('=');
    if (!isMainGroup || !line.starts_with("Name") || end == std::string::npos) continue;
    const auto key = line.substr(0, line.find_last_not_of(' ', end - 1) + 1);
    const auto value = std::min(line.find_first_not_of(' ', end + 1), line.size());
    names.emplace(key, line.substr(value));
  }
  return names;
}

}  // namespace

ApplicationNames::ApplicationNames() : ApplicationNames(entryFolders(), userLanguages()) {}

ApplicationNames::ApplicationNames(std::vector<path> folders, std::vector<std::string> languages)
    : folders_(std::move(folders)), languages_(std::move(languages)) {}

std::string ApplicationNames::nameOf(const std::string& id) {
  if (id == OWN_WINDOW_CLASS || id == OWN_DESKTOP_ENTRY) return OWN_NAME;
  if (const auto known = known_.find(id); known != known_.end()) return known->second;
  if (id.size() > LONGEST_ID) return id;
  if (known_.size() >= MOST_KNOWN) known_.clear();
  const auto found = lookUp(id).value_or("");
  return known_[id] = found.empty() ? id : found;
}

std::optional<std::string> ApplicationNames::lookUp(const std::string& id) const {
  if (id.find('/') != std::string::npos) return std::nullopt;
  for (const auto& folder : folders_) {
    for (const auto& stem : {id, lowered(id)}) {
      const auto file = folder / (stem + ".desktop");
      if (!isUsable(file)) continue;
      std::ifstream entry(file);
      auto names = namesIn(entry);
      for (const auto& language : languages_) {
        if (const auto name = names.find("Name[" + language + "]"); name != names.end()) {
          return name->second;
        }
      }
      return names["Name"];
    }
  }
  return std::nullopt;
}

}  // namespace notewick
