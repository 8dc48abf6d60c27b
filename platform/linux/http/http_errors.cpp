#include "platform/linux/http/http_errors.h"

#include <cerrno>

namespace notewick {

const char* descriptionOf(CURLcode code, long systemError) {
  switch (code) {
    case CURLE_URL_MALFORMAT:
      return http_error::INVALID_ADDRESS;
    case CURLE_COULDNT_RESOLVE_HOST:
      return http_error::NOT_FOUND;
    case CURLE_COULDNT_RESOLVE_PROXY:
      return http_error::PROXY_NOT_FOUND;
    case CURLE_PROXY:
      return http_error::PROXY_REFUSED;
    case CURLE_COULDNT_CONNECT:
      return systemError == ECONNREFUSED ? http_error::REFUSED : http_error::FAILED;
    case CURLE_OPERATION_TIMEDOUT:
      return http_error::TIMED_OUT;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
      return http_error::LOST;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_FUNCTION_ARGUMENT:
    case CURLE_BAD_CONTENT_ENCODING:
      return http_error::NOT_UNDERSTOOD;
    case CURLE_OUT_OF_MEMORY:
      return http_error::TOO_LARGE;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_PEER_FAILED_VERIFICATION:
      return http_error::INSECURE;
    default:
      return http_error::FAILED;
  }
}

}  // namespace notewick
