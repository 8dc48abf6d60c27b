#pragma once

#include <functional>

class QDBusMessage;
class QObject;

namespace notewick {

/// Makes a call on the session bus and hands the answer to `then`, in a later turn, however long it
/// takes, unless `caller` is gone by then. A call that is refused for load is made again a second
/// later, for as long as that lasts. Main thread.
void callPatiently(const QDBusMessage& message, QObject* caller,
                   std::function<void(const QDBusMessage& answer)> then);

}  // namespace notewick
