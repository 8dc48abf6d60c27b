#pragma once

#include <QDeadlineTimer>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QUrl>
#include <functional>
#include <map>
#include <vector>

namespace notewick {

/// The proxies of the desktop's settings, as Qt's system configuration gives them.
///
/// Asking takes from 10 ms to many seconds (on Debian libproxy asks: GNOME's settings through a
/// helper program, an automatic configuration over the network). So a thread of its own asks, once
/// for each origin, and what it heard counts for a minute. Main thread.
class DesktopProxies : public QObject {
 public:
  using Ask = std::function<QList<QNetworkProxy>(const QNetworkProxyQuery&)>;
  using Found = std::function<void(const QList<QNetworkProxy>&)>;

  /// `ask` is called on another thread.
  explicit DesktopProxies(Ask ask) : ask_(std::move(ask)) {}

  /// Calls `found` in this turn where the answer is known, else in a later one; never after this
  /// object has gone.
  void find(const QUrl& url, Found found);

 private:
  struct Origin {
    QList<QNetworkProxy> proxies;
    QDeadlineTimer known{0};
    std::vector<Found> waiting;
  };

  void ask(const QString& name, const QUrl& url);
  void heard(const QString& name, const QList<QNetworkProxy>& proxies);

  Ask ask_;
  std::map<QString, Origin> origins_;
};

}  // namespace notewick
