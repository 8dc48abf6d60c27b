#include "platform/ports.h"

#include <optional>
#include <utility>

#include "platform/fatal_error.h"

namespace notewick {
namespace {

std::unique_ptr<Ports>& registeredPorts() {
  static std::unique_ptr<Ports> registered;
  return registered;
}

}  // namespace

void registerPorts(Ports ports) {
  registeredPorts() = std::make_unique<Ports>(std::move(ports));
}

const Ports& ports() {
  if (!registeredPorts()) fatalError("no platform is registered");
  return *registeredPorts();
}

}  // namespace notewick
