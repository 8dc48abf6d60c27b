#include "client/base_url.h"

#include "app/constants.h"
#include "client/uri.h"
#include "platform/fatal_error.h"
#include "platform/ports.h"
#include "platform/web_address.h"

namespace notewick {

std::string apiBaseURL() {
  std::string base =
      ports().userDefaults.string("VELKBaseURL").value_or(std::string(DEFAULT_BASE_URL));
  if (base.ends_with('/')) base.pop_back();
  return base;
}

std::string serviceURL(const std::string& path) {
  const std::string url = apiBaseURL() + path;
  if (!isUriReference(url)) fatalError("VELKBaseURL is no valid address: " + apiBaseURL());
  return url;
}

std::string loginPageURL() {
  return std::string(uriOrigin(apiBaseURL())) + "/login";
}

}  // namespace notewick
