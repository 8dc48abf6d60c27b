#include <QDateTime>
#include <QNetworkProxyFactory>
#include <QProcessEnvironment>

#include "app/constants.h"
#include "client/base_url.h"
#include "client/uri.h"
#include "doctor/linux/checks.h"
#include "doctor/linux/turns.h"
#include "doctor/service_findings.h"
#include "platform/linux/http/proxy_choice.h"
#include "platform/linux/http_session.h"
#include "platform/web_address.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

constexpr auto SERVICE_PATIENCE = 9s;
constexpr double SECONDS_OF_SILENCE = 8;
constexpr double SECONDS_OF_A_DAY = 24 * 60 * 60;

Finding lookAtAddress() {
  return aboutAddress(apiBaseURL());
}

ProxyFacts factsOf(const ProxyChoice& choice, const std::string& namedBy) {
  if (!choice) return {ProxyKind::unusable, "", 0, namedBy};
  if (choice->type() == QNetworkProxy::NoProxy) return {ProxyKind::none, "", 0, namedBy};
  const bool isSocks = choice->type() == QNetworkProxy::Socks5Proxy;
  return {isSocks ? ProxyKind::socks5 : ProxyKind::http, choice->hostName().toStdString(),
          choice->port(), namedBy};
}

ProxyFacts proxyFacts(const std::string& base) {
  if (isLoopbackAddress(base)) return {ProxyKind::none, "", 0, ""};
  const QUrl url(QString::fromStdString(base));
  if (const auto choice = proxyOfEnvironment(url, QProcessEnvironment::systemEnvironment())) {
    return factsOf(*choice, "the environment");
  }
  const auto proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
  return factsOf(proxyOfDesktop(proxies), "the desktop's settings");
}

Finding lookAtProxy() {
  const Turns turns;
  return aboutProxy(proxyFacts(apiBaseURL()));
}

std::optional<CertificateEnd> certificateEnd(const CurlHttpSession& session) {
  const auto end = session.certificateEnd();
  if (!end) return std::nullopt;
  const auto day = QDateTime::fromSecsSinceEpoch(end->time_since_epoch().count());
  const auto now = QDateTime::currentDateTime();
  return CertificateEnd{day.toString("yyyy-MM-dd").toStdString(),
                        static_cast<double>(now.secsTo(day)) / SECONDS_OF_A_DAY};
}

/// Asks for what needs a token, without one.
HttpRequest harmlessRequest() {
  return {"GET",
          serviceURL("/api/desktop/participants"),
          {{"Content-Type", "application/json"}, {"User-Agent", std::string(USER_AGENT)}},
          std::nullopt,
          SECONDS_OF_SILENCE};
}

Finding lookAtService() {
  if (!isSecureAddress(apiBaseURL()) || !isUriReference(apiBaseURL())) {
    return aboutService({std::nullopt, "The address cannot be used.", std::nullopt});
  }
  const Turns turns;
  CurlHttpSession session({SECONDS_OF_SILENCE});
  ServiceFacts facts{std::nullopt, "The request timed out.", std::nullopt};
  bool isOver = false;
  session.send(harmlessRequest(), [&](const auto& outcome) {
    isOver = true;
    if (outcome) facts.statusCode = outcome->statusCode;
    facts.failure = outcome ? "No response." : outcome.error().description;
  });
  Turns::until([&] { return isOver; }, SERVICE_PATIENCE);
  facts.certificate = certificateEnd(session);
  return aboutService(facts);
}

}  // namespace

std::vector<Check> serviceChecks() {
  return {{"address", lookAtAddress}, {"proxy", lookAtProxy}, {"service", lookAtService}};
}

}  // namespace notewick
