#include "platform/linux/screen.h"

#include <utility>

#include "platform/linux/accessibility.h"
#include "platform/linux/atspi/atspi_screen.h"
#include "platform/linux/session/session_lock.h"
#include "platform/linux/wayland/foreign_toplevels.h"
#include "platform/linux/wayland/wayland_connection.h"
#include "platform/linux/x11/x11_screen.h"

namespace notewick {
namespace {

/// A compositor may be busy while the user logs in, and the choice is made only once.
constexpr std::chrono::seconds PATIENCE_AT_START{2};

/// What an X server may take of a sample that asks the AT-SPI bus as well; it needs less
/// than a hundredth of that.
constexpr std::chrono::milliseconds LIMIT_OF_X_PROGRAMS{50};

class NoScreen final : public Screen {
 public:
  std::optional<FrontmostApplication> frontmostApplication(std::size_t) override {
    return std::nullopt;
  }
};

/// The X programs of a Wayland session before its native ones: the X server names no window as the
/// active one while a native window is.
class ScreenWithXPrograms final : public Screen {
 public:
  ScreenWithXPrograms(std::unique_ptr<Screen> xPrograms, std::unique_ptr<Screen> others)
      : xPrograms_(std::move(xPrograms)), others_(std::move(others)) {}

  std::optional<FrontmostApplication> frontmostApplication(std::size_t mostWindows) override {
    if (auto application = xPrograms_->frontmostApplication(mostWindows)) return application;
    return others_->frontmostApplication(mostWindows);
  }

 private:
  std::unique_ptr<Screen> xPrograms_;
  std::unique_ptr<Screen> others_;
};

class LockableScreen final : public Screen {
 public:
  explicit LockableScreen(std::unique_ptr<Screen> screen) : screen_(std::move(screen)) {}

  std::optional<FrontmostApplication> frontmostApplication(std::size_t mostWindows) override {
    return lock_.isLocked() ? std::nullopt : screen_->frontmostApplication(mostWindows);
  }

 private:
  std::unique_ptr<Screen> screen_;
  SessionLock lock_;
};

TitleReader readerForSession() {
  if (WaylandConnection::open()) {
    auto reader = makeToplevelReader();
    return reader ? std::move(*reader) : makeAtspiAndX11Reader();
  }
  if (auto reader = makeX11Reader()) return std::move(*reader);
  return makeBlindReader();
}

TitleReader atspiReader(const char* name, std::chrono::milliseconds limit) {
  auto bus = std::make_shared<AtspiBus>();
  return {name, std::make_unique<AtspiScreen>(bus, limit), std::make_unique<AtspiTrust>(bus)};
}

}  // namespace

std::optional<TitleReader> makeX11Reader() {
  auto connection = X11Connection::open();
  if (!connection) return std::nullopt;
  return TitleReader{"X11 properties", std::make_unique<X11Screen>(std::move(connection)),
                     std::make_unique<FixedTrust>(true)};
}

std::optional<TitleReader> makeToplevelReader() {
  auto toplevels = ForeignToplevels::open(Deadline(PATIENCE_AT_START));
  if (!toplevels) return std::nullopt;
  return TitleReader{"the compositor's list",
                     std::make_unique<ToplevelScreen>(std::move(toplevels)),
                     std::make_unique<FixedTrust>(true)};
}

TitleReader makeAtspiReader() {
  return atspiReader("the accessibility bus", SAMPLE_LIMIT);
}

TitleReader makeAtspiAndX11Reader() {
  auto connection = X11Connection::open();
  if (!connection) return makeAtspiReader();
  auto reader =
      atspiReader("the accessibility bus and X11 properties", SAMPLE_LIMIT - LIMIT_OF_X_PROGRAMS);
  reader.screen = std::make_unique<ScreenWithXPrograms>(
      std::make_unique<X11Screen>(std::move(connection), LIMIT_OF_X_PROGRAMS),
      std::move(reader.screen));
  return reader;
}

TitleReader makeBlindReader() {
  return {"no reader", std::make_unique<NoScreen>(), std::make_unique<FixedTrust>(false)};
}

TitleReader chooseTitleReader() {
  auto reader = readerForSession();
  reader.screen = std::make_unique<LockableScreen>(std::move(reader.screen));
  return reader;
}

}  // namespace notewick
