#include "platform/linux/controls/colour_scheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QString>

namespace notewick {
namespace {

const QString PORTAL = QStringLiteral("org.freedesktop.portal.Desktop");
const QString PATH = QStringLiteral("/org/freedesktop/portal/desktop");
const QString SETTINGS = QStringLiteral("org.freedesktop.portal.Settings");
const QString APPEARANCE = QStringLiteral("org.freedesktop.appearance");
const QString COLOUR_SCHEME = QStringLiteral("color-scheme");
constexpr uint PREFERS_DARK = 1;

/// What is inside; the portal's answer is a variant in a variant.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

void apply(const QVariant& scheme) {
  const bool wantsDark = unwrapped(scheme).toUInt() == PREFERS_DARK;
  if (wantsDark && isDark(QApplication::palette())) return;
  QApplication::setPalette(wantsDark ? darkPalette() : QPalette());
}

}  // namespace

ColourScheme::ColourScheme() {
  QDBusConnection::sessionBus().connect(PORTAL, PATH, SETTINGS, QStringLiteral("SettingChanged"),
                                        this, SLOT(onSettingChanged(QDBusMessage)));
  ask();
}

void ColourScheme::ask() {
  auto question = QDBusMessage::createMethodCall(PORTAL, PATH, SETTINGS, QStringLiteral("Read"));
  question << APPEARANCE << COLOUR_SCHEME;
  auto* const call =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [call] {
    call->deleteLater();
    if (!call->isError()) apply(call->reply().arguments().value(0));
  });
}

void ColourScheme::onSettingChanged(const QDBusMessage& signal) {
  const auto setting = signal.arguments();
  if (setting.value(0) == APPEARANCE && setting.value(1) == COLOUR_SCHEME) apply(setting.value(2));
}

QPalette darkPalette() {
  QPalette dark(QColor(0x3a, 0x3a, 0x3a), QColor(0x2d, 0x2d, 0x2d));
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
  dark.setColor(QPalette::Highlight, QColor(0x1c, 0x71, 0xd8));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::PlaceholderText, QColor(0xff, 0xff, 0xff, 0x90));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(QPalette::Disabled, role, QColor(0x90, 0x90, 0x90));
  }
  return dark;
}

}  // namespace notewick

#include "moc_colour_scheme.cpp"
