#include "platform/linux/upload_once.h"

#include <utility>

namespace notewick {

UploadOnce::UploadOnce(std::string body) : body_(std::move(body)) {
  open(ReadOnly);
}

qint64 UploadOnce::bytesAvailable() const {
  return static_cast<qint64>(body_.size() - position_) + QIODevice::bytesAvailable();
}

qint64 UploadOnce::readData(char* data, qint64 size) {
  if (position_ == body_.size()) return -1;
  const std::size_t count = body_.copy(data, static_cast<std::size_t>(size), position_);
  position_ += count;
  return static_cast<qint64>(count);
}

}  // namespace notewick
