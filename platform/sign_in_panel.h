#pragma once

#include <string>

#include "platform/floating_panel.h"

namespace notewick {

/// The fixed texts of the sign-in panel.
struct SignInTexts {
  std::string title;
  std::string heading;
  std::string explanation;
  std::string emailLabel;
  std::string emailPlaceholder;
  std::string passwordLabel;
  std::string signIn;
};

/// Receives what the user did in the panel. Main thread.
class SignInPanelDelegate {
 public:
  virtual ~SignInPanelDelegate() = default;

  /// The button was pressed, or Return in a field.
  virtual void signIn() = 0;
  /// The user closes the panel. Not called for `orderOut`, for quitting, or for the session's end.
  virtual void windowWillClose() = 0;
};

/// The sign-in panel: a passive form. Main thread.
class SignInPanel : public FloatingPanel {
 public:
  /// Puts the panel into the middle of the screen, brings the program and the panel to the front
  /// with the keyboard, and moves the focus into the e-mail field.
  virtual void present() = 0;

  /// Puts the panel into the middle of the screen and shows it above the others. The keyboard stays
  /// where it is.
  virtual void presentQuietly() = 0;

  [[nodiscard]] virtual std::string email() const = 0;
  [[nodiscard]] virtual std::string password() const = 0;

  /// The error below the fields; an empty text clears it. The panel grows with it as needed.
  virtual void setError(const std::string& text) = 0;
  /// While busy the button is disabled and a spinner turns.
  virtual void setBusy(bool busy) = 0;
};

}  // namespace notewick
