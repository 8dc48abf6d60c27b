#include "doctor/service_findings.h"

#include "client/uri.h"
#include "platform/web_address.h"

namespace notewick {
namespace {

constexpr double RENEWAL_IS_DUE = 14;  // days
constexpr int WANTS_A_TOKEN = 401;
constexpr int TOO_MANY_REQUESTS = 429;
constexpr int FIRST_SERVER_ERROR = 500;

std::string withoutUser(std::string_view origin) {
  const auto user = origin.rfind('@');
  if (user == std::string_view::npos) return std::string(origin);
  const auto scheme = origin.substr(0, origin.find("//") + 2);
  return std::string(scheme) + std::string(origin.substr(user + 1));
}

std::string certificateText(const std::optional<CertificateEnd>& certificate) {
  if (!certificate) return "";
  return (certificate->daysLeft < 0 ? ", its certificate ended on "
                                    : ", its certificate ends on ") +
         certificate->day;
}

}  // namespace

Finding aboutAddress(std::string_view base) {
  if (!isWebAddress(base) || !isUriReference(base)) {
    return toDo("is no web address. Correct VELKBaseURL in the settings.");
  }
  const std::string origin = withoutUser(uriOrigin(base));
  if (isSecureAddress(base)) return fine(origin);
  return toDo(origin + " is not secure. Let VELKBaseURL begin with https in the settings.");
}

Finding aboutProxy(const ProxyFacts& proxy) {
  const std::string place =
      proxy.host + ":" + std::to_string(proxy.port) + ", named by " + proxy.namedBy;
  switch (proxy.kind) {
    case ProxyKind::http:
      return fine("HTTP at " + place);
    case ProxyKind::socks5:
      return fine("SOCKS5 at " + place);
    case ProxyKind::unusable:
      return toDo("cannot be used. Correct the address that " + proxy.namedBy + " names.");
    case ProxyKind::none:
      break;
  }
  return fine("none");
}

Finding aboutService(const ServiceFacts& service) {
  const std::string certificate = certificateText(service.certificate);
  if (!service.statusCode) {
    return toDo("was not reached" + certificate + ". " + service.failure +
                " Check the network, and ask whoever runs the service.");
  }
  const std::string answer = "answers with " + std::to_string(*service.statusCode) + certificate;
  if (*service.statusCode >= FIRST_SERVER_ERROR || *service.statusCode == TOO_MANY_REQUESTS) {
    return toDo(answer + ". Try again later, and ask whoever runs the service.");
  }
  if (*service.statusCode != WANTS_A_TOKEN) {
    return toDo(answer + ", not as VELK does. Correct VELKBaseURL in the settings.");
  }
  if (service.certificate && service.certificate->daysLeft < RENEWAL_IS_DUE) {
    return toDo(answer + ". Ask whoever runs the service to renew the certificate.");
  }
  return fine(answer);
}

}  // namespace notewick
