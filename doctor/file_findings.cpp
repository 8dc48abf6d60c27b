#include "doctor/file_findings.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

namespace notewick {
namespace {

constexpr unsigned FOR_OTHERS = 077;
constexpr std::array<std::string_view, 5> OWN_FILES = {
    "Notewick.ini", "outbox.json", "participants.json", "pending.json", "watch.log"};

std::string octal(unsigned rights) {
  std::ostringstream text;
  text << '0' << std::oct << rights;
  return text.str();
}

std::string bytesAndRights(std::uint64_t bytes, unsigned rights) {
  return std::to_string(bytes) + " bytes " + octal(rights);
}

/// A list whose file is missing or well.
std::optional<std::string> sizeOf(const ListFacts& list) {
  if (!list.exists) return "none";
  if (!list.count) return std::nullopt;
  return std::to_string(*list.count);
}

Finding damaged(const std::string& file) {
  return toDo(file + " is no list. Keep a copy of it: Notewick begins an empty one over it.");
}

/// Files of one kind, added up.
struct Total {
  std::size_t count = 0;
  std::uint64_t bytes = 0;
  unsigned rights = 0;  ///< whatever any of them has

  void add(const FileFacts& file) {
    ++count;
    bytes += file.bytes;
    rights |= file.rights;
  }
};

std::string textOf(const Total& total, const std::string& what) {
  if (total.count == 0) return "";
  return ", " + std::to_string(total.count) + " " + what + " " +
         bytesAndRights(total.bytes, total.rights);
}

bool isCapturesLog(const FileFacts& file) {
  return file.name.starts_with("captures-") && file.name.ends_with(".log");
}

bool isOwn(const FileFacts& file) {
  return std::ranges::find(OWN_FILES, file.name) != OWN_FILES.end();
}

}  // namespace

Finding aboutParticipants(const ListFacts& list) {
  const auto size = sizeOf(list);
  if (!size) return toDo("participants.json is no list. Choose “Reload participants”.");
  if (*size == "none" || *size == "0") {
    return toDo("none. Choose “Reload participants” in Notewick's menu when you are signed in.");
  }
  return fine(*size);
}

Finding aboutCaughtWork(const ListFacts& list) {
  const auto size = sizeOf(list);
  return size ? fine(*size) : damaged("pending.json");
}

Finding aboutNotes(const ListFacts& list) {
  const auto size = sizeOf(list);
  if (!size) return damaged("outbox.json");
  if (*size == "none" || *size == "0") return fine("none waiting");
  return toDo(*size + " waiting. Choose “Retry now” in Notewick's menu.");
}

Finding aboutFiles(std::optional<unsigned> folderRights, const std::vector<FileFacts>& files) {
  if (!folderRights) return fine("none yet");
  std::string text = "folder " + octal(*folderRights);
  unsigned rights = *folderRights;
  Total captures;
  Total others;
  for (const FileFacts& file : files) {
    if (isOwn(file)) text += ", " + file.name + " " + bytesAndRights(file.bytes, file.rights);
    if (isCapturesLog(file)) captures.add(file);
    if (isOwn(file) || isCapturesLog(file)) {
      rights |= file.rights;
    } else {
      others.add(file);
    }
  }
  text += textOf(captures, "captures logs") + textOf(others, "other files");
  if ((rights & FOR_OTHERS) == 0) return fine(text);
  return toDo(text + ". Others can read them: quit Notewick and start it again.");
}

Finding aboutStartAtLogin(const std::optional<std::string>& entry) {
  if (!entry) return fine("off");
  std::istringstream lines(*entry);
  for (std::string line; std::getline(lines, line);) {
    if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false") {
      return fine("off, by the desktop's settings");
    }
  }
  return fine("on");
}

}  // namespace notewick
