#pragma once

#include <QObject>
#include <QTimer>
#include <map>

#include "platform/linux/http/curl_handles.h"

class QSocketNotifier;

namespace notewick {

/// What CurlLoop reports about a transfer. Both are called from the event loop only.
class CurlTransfer {
 public:
  virtual ~CurlTransfer() = default;

  /// Something came in on the transfer's socket, or the socket took something.
  virtual void progressed() = 0;
  /// The transfer is over. It may be removed inside this call.
  virtual void ended(CURLcode code) = 0;
};

/// Runs libcurl's transfers on Qt's event loop, on the thread that made it, without blocking. They
/// share their TLS sessions: a server that was judged once is not judged anew for each connection
/// while the session lasts that it gave (RFC 8446, section 2.2).
class CurlLoop : public QObject {
 public:
  CurlLoop();
  ~CurlLoop() override;

  /// Starts the transfer with the next turn of the event loop. Both have to stay until it is
  /// removed.
  void add(CURL* handle, CurlTransfer& transfer);
  /// Breaks the transfer off where it is still under way. Not to be called inside a callback of
  /// libcurl.
  void remove(CURL* handle);

 private:
  struct Watch {
    CurlTransfer* transfer;
    QSocketNotifier* readable;
    QSocketNotifier* writable;
  };

  static int onSocket(CURL* handle, curl_socket_t socket, int wanted, void* self, void* unused);
  static int onTimer(CURLM* multi, long milliseconds, void* self);

  void watch(CURL* handle, curl_socket_t socket, int wanted);
  void forget(curl_socket_t socket);
  [[nodiscard]] Watch makeWatch(CURL* handle, curl_socket_t socket);
  void socketIsReady(curl_socket_t socket, int events);
  void act(curl_socket_t socket, int events);
  void tellEnded();

  QTimer timer_;
  std::map<curl_socket_t, Watch> watches_;
  CurlShare sessions_;
  CurlMulti multi_;
};

}  // namespace notewick
