#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>

namespace notewick {

/// The windows are dark where the user asked the desktop for dark ones, and follow when the wish
/// changes. Qt knows themes only, and GNOME's switch leaves the theme as it is; so this
/// listens to the desktop portal (setting `color-scheme` of `org.freedesktop.appearance`). A theme
/// that is dark already stays, and so does everything where no portal answers; nothing waits for
/// it. Main thread; lives as long as the application object, or shorter.
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
