#include "platform/linux/screen.h"

#include <utility>

#include "platform/linux/accessibility.h"
#include "platform/linux/atspi_screen.h"
#include "platform/linux/session_lock.h"
#include "platform/linux/toplevel_screen.h"
#include "platform/linux/wayland_connection.h"
#include "platform/linux/x11_screen.h"

namespace notewick {
namespace {

/// A compositor may be busy while the user logs in, and the choice is made only once.
constexpr std::chrono::seconds patienceAtStart{2};

class NoScreen final : public Screen {
 public:
  std::unique_ptr<ScreenApplication> frontmostApplication() override { return nullptr; }
};

class LockableScreen final : public Screen {
 public:
  explicit LockableScreen(std::unique_ptr<Screen> screen) : screen_(std::move(screen)) {}

  std::unique_ptr<ScreenApplication> frontmostApplication() override {
    return lock_.isLocked() ? nullptr : screen_->frontmostApplication();
  }

 private:
  std::unique_ptr<Screen> screen_;
  SessionLock lock_;
};

ScreenBody bodyOfSession() {
  if (WaylandConnection::open()) {
    auto body = makeToplevelBody();
    return body ? std::move(*body) : makeAtspiBody();
  }
  if (auto body = makeX11Body()) return std::move(*body);
  return makeBlindBody();
}

}  // namespace

std::optional<ScreenBody> makeX11Body() {
  auto connection = X11Connection::open();
  if (!connection) return std::nullopt;
  return ScreenBody{std::make_unique<X11Screen>(std::move(connection)),
                    std::make_unique<FixedTrust>(true)};
}

std::optional<ScreenBody> makeToplevelBody() {
  auto toplevels = ForeignToplevels::open(Deadline(patienceAtStart));
  if (!toplevels) return std::nullopt;
  return ScreenBody{std::make_unique<ToplevelScreen>(std::move(toplevels)),
                    std::make_unique<FixedTrust>(true)};
}

ScreenBody makeAtspiBody() {
  auto bus = std::make_shared<AtspiBus>();
  return {std::make_unique<AtspiScreen>(bus), std::make_unique<AtspiTrust>(bus)};
}

ScreenBody makeBlindBody() {
  return {std::make_unique<NoScreen>(), std::make_unique<FixedTrust>(false)};
}

ScreenBody chooseScreenBody() {
  auto body = bodyOfSession();
  body.screen = std::make_unique<LockableScreen>(std::move(body.screen));
  return body;
}

}  // namespace notewick
