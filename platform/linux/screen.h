#pragma once

#include <memory>
#include <optional>

#include "platform/accessibility.h"
#include "platform/screen.h"

namespace notewick {

/// The reader of titles for one kind of session, with what it needs to be trusted.
struct ScreenBody {
  std::unique_ptr<Screen> screen;
  std::unique_ptr<Accessibility> accessibility;
};

/// X11 properties; absent when no X server answers at DISPLAY.
[[nodiscard]] std::optional<ScreenBody> makeX11Body();

/// The compositor's own list of windows; absent when there is no compositor at WAYLAND_DISPLAY or
/// it does not offer such a list.
[[nodiscard]] std::optional<ScreenBody> makeToplevelBody();

/// The accessibility bus. Always there; whether anything can be read shows later.
[[nodiscard]] ScreenBody makeAtspiBody();

/// What is left when a Wayland compositor tells nothing: the accessibility bus, and for the
/// programs of the X server inside the session, many of which never join that bus, X11 properties.
[[nodiscard]] ScreenBody makeAtspiAndX11Body();

/// Nothing to read: nothing is ever frontmost, and it is never trusted.
[[nodiscard]] ScreenBody makeBlindBody();

/// The body for the session that the environment names. Wayland goes before X11, because the X
/// server inside a Wayland session knows only some of the windows. Nothing is frontmost while the
/// screen is locked.
[[nodiscard]] ScreenBody chooseScreenBody();

/// What is on screen on a Linux desktop. Chooses its body once, at the first use of either port.
class DesktopScreen final : public Screen, public Accessibility {
 public:
  [[nodiscard]] std::unique_ptr<ScreenApplication> frontmostApplication() override {
    return body().screen->frontmostApplication();
  }

  [[nodiscard]] bool isTrusted() override { return body().accessibility->isTrusted(); }
  bool isTrustedWithPrompt() override { return body().accessibility->isTrustedWithPrompt(); }
  [[nodiscard]] TrustRemedy remedy() const override { return TrustRemedy::prompt; }

 private:
  ScreenBody& body() {
    if (!body_) body_ = chooseScreenBody();
    return *body_;
  }

  std::optional<ScreenBody> body_;
};

}  // namespace notewick
