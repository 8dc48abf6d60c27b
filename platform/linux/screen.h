#pragma once

#include <memory>
#include <optional>

#include "platform/accessibility.h"
#include "platform/screen.h"

namespace notewick {

/// The reader of titles for one kind of session, with what it needs to be trusted.
struct TitleReader {
  const char* name;  ///< for people who help the user
  std::unique_ptr<Screen> screen;
  std::unique_ptr<Accessibility> accessibility;
};

/// X11 properties; absent when no X server answers at DISPLAY.
[[nodiscard]] std::optional<TitleReader> makeX11Reader();

/// The compositor's own list of windows; absent when there is no compositor at WAYLAND_DISPLAY or
/// it does not offer such a list.
[[nodiscard]] std::optional<TitleReader> makeToplevelReader();

/// The AT-SPI bus. Always there; whether anything can be read shows later.
[[nodiscard]] TitleReader makeAtspiReader();

/// What is left when a Wayland compositor lists no windows: the AT-SPI bus, and for the
/// programs of the X server inside the session, many of which never join that bus, X11 properties.
[[nodiscard]] TitleReader makeAtspiAndX11Reader();

/// Nothing to read: nothing is ever frontmost, and it is never trusted.
[[nodiscard]] TitleReader makeBlindReader();

/// The reader for the session that the environment names. Wayland goes before X11, because the X
/// server inside a Wayland session knows only some of the windows. Nothing is frontmost while the
/// screen is locked.
[[nodiscard]] TitleReader chooseTitleReader();

/// What is on screen on a Linux desktop. Chooses its reader once, at the first use of either port.
class DesktopScreen final : public Screen, public Accessibility {
 public:
  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override {
    return reader().screen->frontmostApplication(mostWindows);
  }

  [[nodiscard]] bool isTrusted() override { return reader().accessibility->isTrusted(); }
  bool isTrustedWithPrompt() override { return reader().accessibility->isTrustedWithPrompt(); }
  [[nodiscard]] TrustRemedy remedy() const override { return TrustRemedy::prompt; }

 private:
  TitleReader& reader() {
    if (!reader_) reader_ = chooseTitleReader();
    return *reader_;
  }

  std::optional<TitleReader> reader_;
};

}  // namespace notewick
