#include "platform/macos/uuid_source.h"

#include "platform/macos/bridge/text.h"

namespace notewick {

std::string CocoaUuidSource::next() { return utf8(NSUUID.UUID.UUIDString); }

}  // namespace notewick
