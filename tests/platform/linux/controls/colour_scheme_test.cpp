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

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
constexpr uint noPreference = 0, prefersDark = 1, prefersLight = 2;

QVariant wrapped(const QVariant& value) {
  return QVariant::fromValue(QDBusVariant(value));
}

/// A desktop portal that knows one setting, or none at all.
class Portal : public QDBusVirtualObject {
 public:
  explicit Portal(std::optional<uint> scheme) : scheme_(scheme) {
    bus_.registerVirtualObject(portalPath, this);
    bus_.registerService(portalName);
  }
  ~Portal() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override {
    const QVariantList asked{appearance, "color-scheme"};
    const bool isKnown = scheme_ && message.interface() == settings && message.member() == "Read" &&
                         message.arguments() == asked;
    ++questions;
    return from.send(isKnown ? message.createReply(wrapped(wrapped(*scheme_)))
                             : message.createErrorReply(settings + ".NotFound", "not found"));
  }

  void tell(const QString& group, const QString& key, const QVariant& value) {
    auto signal = QDBusMessage::createSignal(portalPath, settings, "SettingChanged");
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
  static inline const QColor dark = darkPalette().color(QPalette::Window);
};

TEST_F(ColourSchemeTest, StaysAsTheThemeIsWithoutAWishOrAnAnswer) {
  for (const std::optional<uint> wish :
       {std::optional(noPreference), std::optional(prefersLight), std::optional<uint>()}) {
    const Portal portal(wish);
    const ColourScheme scheme;
    ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
    catchUp();
    EXPECT_EQ(window(), own);
  }
}

TEST_F(ColourSchemeTest, FollowsTheWish) {
  Portal portal(noPreference);
  const ColourScheme scheme;
  ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
  for (const uint other : {noPreference, prefersLight}) {
    portal.tell(appearance, "color-scheme", prefersDark);
    EXPECT_TRUE(turns(dark));
    portal.tell(appearance, "color-scheme", other);
    EXPECT_TRUE(turns(own));
  }
}

TEST_F(ColourSchemeTest, LeavesAThemeThatIsDarkAlready) {
  QApplication::setPalette(QPalette(QColor(0x20, 0x30, 0x40), QColor(0x10, 0x20, 0x30)));
  Portal portal(prefersDark);
  const ColourScheme scheme;
  portal.tell(appearance, "color-scheme", prefersDark);
  ASSERT_TRUE(waitUntil([&] { return portal.questions == 1; }));
  catchUp();
  EXPECT_EQ(window(), QColor(0x10, 0x20, 0x30));
}

TEST_F(ColourSchemeTest, IsDarkWhereTheDesktopAsksForItAndTakesNoOtherSettingForThat) {
  Portal portal(prefersDark);
  const ColourScheme scheme;
  ASSERT_TRUE(turns(dark));
  ColourChanges changes;
  portal.tell(appearance, "accent-color", noPreference);
  portal.tell("org.gnome.desktop.interface", "color-scheme", noPreference);
  portal.tell(appearance, "color-scheme", prefersDark);
  portal.tell(appearance, "color-scheme", noPreference);
  EXPECT_TRUE(turns(own));
  EXPECT_EQ(changes.count, 1);
}

TEST_F(ColourSchemeTest, FollowsAPortalThatComesLater) {
  const ColourScheme scheme;
  catchUp();
  EXPECT_EQ(window(), own);
  Portal late(noPreference);
  late.tell(appearance, "color-scheme", prefersDark);
  EXPECT_TRUE(turns(dark));
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
