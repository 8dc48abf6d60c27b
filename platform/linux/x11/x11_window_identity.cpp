#include "platform/linux/x11/x11_window_identity.h"

namespace notewick {

bool isSameApplication(const X11WindowIdentity& one, const X11WindowIdentity& other) {
  const bool sameClient = one.client == other.client;
  const bool sameClass = !one.wmClass.empty() && one.wmClass == other.wmClass;
  const bool sameMachine = one.machine == other.machine;
  if (one.pid && other.pid) {
    return one.pid == other.pid && sameMachine && (sameClient || sameClass);
  }
  if (sameClient || (one.leader && one.leader == other.leader)) return true;
  const bool neitherSaysMore = !one.pid && !other.pid && !one.leader && !other.leader;
  return neitherSaysMore && sameClass && sameMachine;
}

std::string_view classPart(std::string_view wmClass) {
  const auto instanceEnd = wmClass.find('\0');
  if (instanceEnd == std::string_view::npos) return {};
  const auto rest = wmClass.substr(instanceEnd + 1);
  return rest.substr(0, rest.find('\0'));
}

}  // namespace notewick
