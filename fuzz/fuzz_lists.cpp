// A list file with any contents reads as a list or as nothing, and a list that was read is written
// and read back unchanged.
#include <cstdlib>

#include "model/record_json.h"

namespace {

template <class Record>
void readAndWriteBack(std::string_view text) {
  const auto records = notewick::decodeRecords<Record>(text);
  if (!records) return;
  const auto written = notewick::encodeRecords(*records);
  const auto again = notewick::decodeRecords<Record>(written.value());
  if (!again || notewick::encodeRecords(*again) != written) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  readAndWriteBack<notewick::Participant>(text);
  readAndWriteBack<notewick::Pending>(text);
  readAndWriteBack<notewick::OutboxItem>(text);
  return 0;
}
