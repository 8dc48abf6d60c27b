#include "platform/linux/uuid_source.h"

#include <QUuid>

namespace notewick {

std::string RandomUuidSource::next() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
}

}  // namespace notewick
