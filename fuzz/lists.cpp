// A list file with any contents reads as a list or as nothing, and a list that was read is written
// and read back unchanged.
#include "fuzz/targets.h"
#include "model/record_json.h"

namespace notewick::fuzz {
namespace {

template <class Record>
void readAndWriteBack(std::string_view text) {
  const auto records = decodeRecords<Record>(text);
  if (!records) return;
  const auto written = encodeRecords(*records);
  require(written.has_value(), "a list that was read can be written");
  const auto again = decodeRecords<Record>(*written);
  require(again && encodeRecords(*again) == written, "a list is read back as it was written");
}

}  // namespace

void lists(std::string_view bytes) {
  readAndWriteBack<Participant>(bytes);
  readAndWriteBack<Pending>(bytes);
  readAndWriteBack<OutboxItem>(bytes);
}

}  // namespace notewick::fuzz
