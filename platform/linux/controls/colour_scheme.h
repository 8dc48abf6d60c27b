#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>

namespace notewick {

/// Uses dark windows when the desktop's colour scheme asks for them, and follows later changes. Qt
/// 6.4 knows themes only (6.5 is the first to know colour schemes), and GNOME's switch leaves the
/// theme as it is. So this listens to the desktop portal (setting `color-scheme` of
/// `org.freedesktop.appearance`). A theme that is dark already stays. Without a portal nothing
/// changes, and nothing waits for one. Main thread; must not outlive the application object.
/// Source:
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html
class ColourScheme final : public QObject {
  Q_OBJECT

 public:
  ColourScheme();

 private slots:
  /// Takes the message as it came: right after its first use the bus library may not know the types
  /// of the arguments yet, and then leaves a slot with these types out without a word.
  void onSettingChanged(const QDBusMessage& signal);

 private:
  void ask();
};

/// The colours of dark windows.
[[nodiscard]] QPalette darkPalette();

}  // namespace notewick
