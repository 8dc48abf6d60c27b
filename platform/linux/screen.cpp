#include "platform/linux/screen.h"

#include <utility>

#include "platform/linux/accessibility.h"
#include "platform/linux/atspi/atspi_screen.h"
#include "platform/linux/session/session_lock.h"
#include "platform/linux/wayland/toplevel_screen.h"
#include "platform/linux/wayland/wayland_connection.h"
#include "platform/linux/x11/x11_screen.h"

namespace notewick {
namespace {

/// A compositor may be busy while the user logs in, and the choice is made only once.
constexpr std::chrono::seconds patienceAtStart{2};

/// What an X server may take of a sample that asks the accessibility bus as well; it needs less
/// than a hundredth of that.
constexpr std::chrono::milliseconds limitOfXPrograms{50};

class NoScreen final : public Screen {
 public:
  std::unique_ptr<ScreenApplication> frontmostApplication() override { return nullptr; }
};

/// The X programs of a Wayland session before its native ones: the X server names no window as the
/// active one while a native window is.
class ScreenWithXPrograms final : public Screen {
 public:
  ScreenWithXPrograms(std::unique_ptr<Screen> xPrograms, std::unique_ptr<Screen> others)
      : xPrograms_(std::move(xPrograms)), others_(std::move(others)) {}

  std::unique_ptr<ScreenApplication> frontmostApplication() override {
    if (auto application = xPrograms_->frontmostApplication()) return application;
    return others_->frontmostApplication();
  }

 private:
  std::unique_ptr<Screen> xPrograms_;
  std::unique_ptr<Screen> others_;
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
    return body ? std::move(*body) : makeAtspiAndX11Body();
  }
  if (auto body = makeX11Body()) return std::move(*body);
  return makeBlindBody();
}

ScreenBody atspiBody(std::chrono::milliseconds limit) {
  auto bus = std::make_shared<AtspiBus>();
  return {std::make_unique<AtspiScreen>(bus, limit), std::make_unique<AtspiTrust>(bus)};
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
  return atspiBody(sampleLimit);
}

ScreenBody makeAtspiAndX11Body() {
  auto connection = X11Connection::open();
  if (!connection) return makeAtspiBody();
  auto body = atspiBody(sampleLimit - limitOfXPrograms);
  body.screen = std::make_unique<ScreenWithXPrograms>(
      std::make_unique<X11Screen>(std::move(connection), limitOfXPrograms), std::move(body.screen));
  return body;
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
