#include <algorithm>
#include <filesystem>

#include "app/constants.h"
#include "doctor/file_findings.h"
#include "doctor/linux/checks.h"
#include "model/local_store.h"
#include "model/record_json.h"
#include "platform/linux/user_defaults.h"
#include "platform/ports.h"
#include "ui/start_at_login.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;

template <class Record>
ListFacts factsOf(const std::string& path) {
  Files& files = ports().files;
  const auto records = decodeRecords<Record>(files.read(path).value_or(""));
  return {files.size(path).has_value(), records ? std::optional(records->size()) : std::nullopt};
}

Finding lookAtParticipants() {
  return aboutParticipants(factsOf<Participant>(participantsCache()));
}

Finding lookAtCaughtWork() {
  return aboutCaughtWork(factsOf<Pending>(pendingFile()));
}

Finding lookAtNotes() {
  return aboutNotes(factsOf<OutboxItem>(outboxFile()));
}

unsigned rightsOf(const fs::path& path) {
  std::error_code failure;
  return static_cast<unsigned>(fs::status(path, failure).permissions() & fs::perms::all);
}

void addFile(const fs::path& path, std::vector<FileFacts>& files) {
  std::error_code failure;
  if (!fs::is_regular_file(path, failure)) return;
  files.push_back({path.filename().string(), fs::file_size(path, failure), rightsOf(path)});
}

Finding lookAtFiles() {
  std::vector<FileFacts> files;
  std::error_code failure;
  for (const auto& entry : fs::directory_iterator(SUPPORT_DIR, failure)) addFile(entry, files);
  addFile(settingsFile(), files);
  std::ranges::sort(files, {}, &FileFacts::name);
  const bool exists = fs::is_directory(SUPPORT_DIR, failure);
  return aboutFiles(exists ? std::optional(rightsOf(SUPPORT_DIR)) : std::nullopt, files);
}

Finding lookAtStartAtLogin() {
  const auto item = loginItemFile(ports().workspace, ports().files.homeFolder());
  return aboutStartAtLogin(ports().files.read(item.folder + "/" + item.name));
}

}  // namespace

std::vector<Check> fileChecks() {
  return {{"participants", lookAtParticipants},
          {"caught work", lookAtCaughtWork},
          {"notes", lookAtNotes},
          {"files", lookAtFiles},
          {"start at login", lookAtStartAtLogin}};
}

}  // namespace notewick
