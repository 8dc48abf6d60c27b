#include "platform/linux/controls/colour_scheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <optional>
#include <utility>

#include "platform/linux/controls/panel_look.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

const QString PORTAL_NAME = QStringLiteral("org.freedesktop.portal.Desktop");
const QString PORTAL_PATH = QStringLiteral("/org/freedesktop/portal/desktop");
const QString SETTINGS = QStringLiteral("org.freedesktop.portal.Settings");
const QString APPEARANCE = QStringLiteral("org.freedesktop.appearance");
constexpr uint NO_PREFERENCE = 0, PREFERS_DARK = 1, PREFERS_LIGHT = 2;

QVariant wrapped(const QVariant& value) {
  return QVariant::fromValue(QDBusVariant(value));
}

/// A desktop portal that knows one setting, or none at all.
class Portal : public QDBusVirtualObject {
 public:
  explicit Portal(std::optional<uint> scheme) : scheme_(scheme) {
    bus_.registerVirtualObject(PORTAL_PATH, this);
    bus_.registerService(PORTAL_NAME);
  }
  ~Portal() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override {
    const QVariantList asked{APPEARANCE, "color-scheme"};
    const bool isKnown = scheme_ && message.interface() == SETTINGS && message.member() == "Read" &&
                         message.arguments() == asked;
    ++questions;
    return from.send(isKnown ? message.createReply(wrapped(wrapped(*scheme_)))
                             : message.createErrorReply(SETTINGS + ".NotFound", "not found"));
  }

  void tell(const QString& group, const QString& key, const QVariant& value) {
    auto signal = QDBusMessage::createSignal(PORTAL_PATH, SETTINGS, "SettingChanged");
    signal << group << key << wrapped(value);
    bus_.send(signal);
  }

  int questions = 0;

 private:
  std::optional<uint> scheme_;
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

/// Counts how often the colours of the application change.
class ColourChanges : public QObject {
 public:
  ColourChanges() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) ++count;
    return false;
  }

  int count = 0;
};

class ColourSchemeTest : public testing::Test {
 protected:
  ColourSchemeTest() { QApplication::setPalette(QPalette()); }
  ~ColourSchemeTest() override { QApplication::setPalette(QPalette()); }

  static QColor window() { return QApplication::palette().color(QPalette::Window); }
  static bool turns(const QColor& wanted) {
    return waitUntil([&] { return window() == wanted; });
  }
  const QColor own = window();
  static inline const QColor DARK = darkPalette().color(QPalette::Window);
};

TEST_F(ColourSchemeTest, StaysAsTheThemeIsWithoutAPreferenceOrAnAnswer) {
  for (const std::optional<uint> preference :
       {std::optional(NO_PREFERENCE), std::optional(PREFERS_LIGHT), std::optional<uint>()}) {
    const Portal portal(preference);
    const ColourScheme scheme;
    ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
    catchUp();
    EXPECT_EQ(window(), own);
  }
}

TEST_F(ColourSchemeTest, FollowsTheWish) {
  Portal portal(NO_PREFERENCE);
  const ColourScheme scheme;
  ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
  for (const uint other : {NO_PREFERENCE, PREFERS_LIGHT}) {
    portal.tell(APPEARANCE, "color-scheme", PREFERS_DARK);
    EXPECT_TRUE(turns(DARK));
    portal.tell(APPEARANCE, "color-scheme", other);
    EXPECT_TRUE(turns(own));
  }
}

TEST_F(ColourSchemeTest, LeavesAThemeThatIsDarkAlready) {
  QApplication::setPalette(QPalette(QColor(0x20, 0x30, 0x40), QColor(0x10, 0x20, 0x30)));
  Portal portal(PREFERS_DARK);
  const ColourScheme scheme;
  portal.tell(APPEARANCE, "color-scheme", PREFERS_DARK);
  ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
  catchUp();
  EXPECT_EQ(window(), QColor(0x10, 0x20, 0x30));
}

TEST_F(ColourSchemeTest, IsDarkWhereTheDesktopAsksForItAndTakesNoOtherSettingForThat) {
  Portal portal(PREFERS_DARK);
  const ColourScheme scheme;
  ASSERT_TRUE(turns(DARK));
  ColourChanges changes;
  portal.tell(APPEARANCE, "accent-color", NO_PREFERENCE);
  portal.tell("org.gnome.desktop.interface", "color-scheme", NO_PREFERENCE);
  portal.tell(APPEARANCE, "color-scheme", PREFERS_DARK);
  portal.tell(APPEARANCE, "color-scheme", NO_PREFERENCE);
  EXPECT_TRUE(turns(own));
  EXPECT_EQ(changes.count, 1);
}

TEST_F(ColourSchemeTest, FollowsAPortalThatComesLater) {
  const ColourScheme scheme;
  catchUp();
  EXPECT_EQ(window(), own);
  Portal late(NO_PREFERENCE);
  late.tell(APPEARANCE, "color-scheme", PREFERS_DARK);
  EXPECT_TRUE(turns(DARK));
}

TEST(DarkPalette, IsLegible) {
  const QPalette palette = darkPalette();
  const auto contrastOf = [&](QPalette::ColorGroup group, QPalette::ColorRole text,
                              QPalette::ColorRole ground) {
    return contrast(palette.color(group, text), palette.color(group, ground));
  };
  const auto pairs = {std::pair(QPalette::WindowText, QPalette::Window),
                      std::pair(QPalette::Text, QPalette::Base),
                      std::pair(QPalette::ButtonText, QPalette::Button)};
  for (const auto& [text, ground] : pairs) {
    EXPECT_GE(contrastOf(QPalette::Active, text, ground), 7.0);
    EXPECT_GE(contrastOf(QPalette::Inactive, text, ground), 7.0);
    EXPECT_GE(contrastOf(QPalette::Disabled, text, ground), 3.0);
  }
  EXPECT_GE(contrastOf(QPalette::Active, QPalette::HighlightedText, QPalette::Highlight), 4.5);
}

}  // namespace
}  // namespace notewick
