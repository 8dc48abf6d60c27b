#pragma once

namespace notewick {

/// How the user gives a program leave to read window titles.
enum class TrustRemedy {
  settingsPage,  ///< in a list on a page of the system's settings
  prompt,        ///< by answering the question that `isTrustedWithPrompt` asks
};

/// Whether this program may read the window titles of others. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// True when window titles can be read now. Never asks the user anything.
  [[nodiscard]] virtual bool isTrusted() = 0;

  /// The same answer; when it is no, the system also asks the user for leave, without blocking.
  virtual bool isTrustedWithPrompt() = 0;

  [[nodiscard]] virtual TrustRemedy remedy() const = 0;
};

}  // namespace notewick
