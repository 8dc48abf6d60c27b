#include "platform/linux/http/curl_loop.h"

#include <QSocketNotifier>

#include "platform/linux/http/curl_memory.h"

namespace notewick {
namespace {

CurlMulti makeMulti() {
  return CurlMulti(curlIsReady() ? curl_multi_init() : nullptr);
}

CurlShare makeSessions() {
  CurlShare sessions(curlIsReady() ? curl_share_init() : nullptr);
  curl_share_setopt(sessions.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
  return sessions;
}

CurlTransfer* transferOf(CURL* handle) {
  CurlTransfer* transfer = nullptr;
  curl_easy_getinfo(handle, CURLINFO_PRIVATE, &transfer);
  return transfer;
}

}  // namespace

CurlLoop::CurlLoop() : sessions_(makeSessions()), multi_(makeMulti()) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);  // libcurl does nothing on one that comes early
  connect(&timer_, &QTimer::timeout, this, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &onSocket);
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &onTimer);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
}

CurlLoop::~CurlLoop() = default;

void CurlLoop::add(CURL* handle, CurlTransfer& transfer) {
  curl_easy_setopt(handle, CURLOPT_PRIVATE, &transfer);
  curl_easy_setopt(handle, CURLOPT_SHARE, sessions_.get());
  curl_multi_add_handle(multi_.get(), handle);
}

void CurlLoop::remove(CURL* handle) {
  curl_multi_remove_handle(multi_.get(), handle);
}

int CurlLoop::onSocket(CURL* handle, curl_socket_t socket, int wanted, void* self,
                       void* /*unused*/) {
  auto* const loop = static_cast<CurlLoop*>(self);
  if (wanted == CURL_POLL_REMOVE) {
    loop->forget(socket);
  } else {
    loop->watch(handle, socket, wanted);
  }
  return 0;
}

int CurlLoop::onTimer(CURLM* /*multi*/, long milliseconds, void* self) {
  QTimer& timer = static_cast<CurlLoop*>(self)->timer_;
  if (milliseconds < 0) {
    timer.stop();
  } else {
    timer.start(static_cast<int>(milliseconds));
  }
  return 0;
}

void CurlLoop::watch(CURL* handle, curl_socket_t socket, int wanted) {
  auto found = watches_.find(socket);
  if (found == watches_.end()) found = watches_.emplace(socket, makeWatch(handle, socket)).first;
  found->second.readable->setEnabled((wanted & CURL_POLL_IN) != 0);
  found->second.writable->setEnabled((wanted & CURL_POLL_OUT) != 0);
}

// A notifier may be the one whose signal is being handled; it goes in a later turn.
void CurlLoop::forget(curl_socket_t socket) {
  const auto found = watches_.find(socket);
  if (found == watches_.end()) return;
  for (QSocketNotifier* notifier : {found->second.readable, found->second.writable}) {
    notifier->setEnabled(false);
    notifier->deleteLater();
  }
  watches_.erase(found);
}

CurlLoop::Watch CurlLoop::makeWatch(CURL* handle, curl_socket_t socket) {
  const auto notifier = [this, socket](QSocketNotifier::Type type, int events) {
    auto* const made = new QSocketNotifier(socket, type, this);
    connect(made, &QSocketNotifier::activated, this,
            [this, socket, events] { socketIsReady(socket, events); });
    return made;
  };
  return {transferOf(handle), notifier(QSocketNotifier::Read, CURL_CSELECT_IN),
          notifier(QSocketNotifier::Write, CURL_CSELECT_OUT)};
}

void CurlLoop::socketIsReady(curl_socket_t socket, int events) {
  const auto found = watches_.find(socket);
  if (found == watches_.end()) return;
  found->second.transfer->progressed();
  act(socket, events);
}

void CurlLoop::act(curl_socket_t socket, int events) {
  int running = 0;
  curl_multi_socket_action(multi_.get(), socket, events, &running);
  tellEnded();
}

void CurlLoop::tellEnded() {
  int waiting = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &waiting)) {
    if (message->msg != CURLMSG_DONE) continue;
    transferOf(message->easy_handle)->ended(message->data.result);
  }
}

}  // namespace notewick
