#include "platform/macos/uuid_source.h"

#include "platform/macos/text.h"

namespace notewick {

std::string CocoaUuidSource::next() { return utf8(NSUUID.UUID.UUIDString); }

}  // namespace notewick
