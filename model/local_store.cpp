#include "model/local_store.h"

#include "app/constants.h"
#include "model/record_json.h"
#include "platform/files.h"

namespace notewick {

std::string pendingFile() {
  return SUPPORT_DIR + "/pending.json";
}
std::string outboxFile() {
  return SUPPORT_DIR + "/outbox.json";
}
std::string participantsCache() {
  return SUPPORT_DIR + "/participants.json";
}

template <class Record>
void loadJSON(Files& files, const std::string& path, std::vector<Record>& list) {
  const auto text = files.read(path);
  if (!text) return;
  list = decodeRecords<Record>(*text).value_or(std::vector<Record>());
}

template <class Record>
void saveJSON(Files& files, const std::string& path, const std::vector<Record>& list) {
  const auto text = encodeRecords(list);
  if (!text || files.replaceInPlace(path, *text) || files.isFolder(SUPPORT_DIR)) return;
  if (files.createFolders(SUPPORT_DIR)) files.replaceInPlace(path, *text);
}

template void loadJSON(Files&, const std::string&, std::vector<Participant>&);
template void loadJSON(Files&, const std::string&, std::vector<Pending>&);
template void loadJSON(Files&, const std::string&, std::vector<OutboxItem>&);
template void saveJSON(Files&, const std::string&, const std::vector<Participant>&);
template void saveJSON(Files&, const std::string&, const std::vector<Pending>&);
template void saveJSON(Files&, const std::string&, const std::vector<OutboxItem>&);

}  // namespace notewick
