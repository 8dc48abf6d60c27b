#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;

class WidgetOnScreenTest : public WorldTest {
 protected:
  WidgetOnScreenTest() { runsKnowing({"Tobias Hargreave", "Lena O'Keefe"}); }

  /// The program starts again, with the widget hidden.
  void startsHidden() {
    defaults.setBoolean("VELKWidgetVisible", false);
    restart();
  }

  /// Whether the next start shows the widget, which the menu agrees with.
  [[nodiscard]] bool isWanted() const {
    const bool wanted = std::get<bool>(defaults.values.at("VELKWidgetVisible"));
    EXPECT_NE(statusItem().find(wanted ? "Hide floating widget" : "Show floating widget"), nullptr);
    return wanted;
  }
};

TEST_F(WidgetOnScreenTest, ItIsMadeWhenItIsFirstShownWithTheListsOfTheMoment) {
  startsHidden();
  EXPECT_EQ(views.quickNote, nullptr);
  app().pendings = {{"P", "Lena O'Keefe", "2024-05-02", Date(0), Date(60), 12, {}}};
  app().outbox = {{"N", "1", "Tobias Hargreave", "x", 30, "2024-05-02"}};
  statusItem().choose("Show floating widget");
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe", "Tobias Hargreave"));
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Lena O'Keefe · ~12m · 2024-05-02"));
  EXPECT_EQ(widget().status, "1 queued — will retry");
  EXPECT_TRUE(isWanted());
}

TEST_F(WidgetOnScreenTest, WithoutATrayItsFirstShowingAfterEachLaunchSaysWhereTheMenuIs) {
  EXPECT_EQ(widget().status, "") << "there is a tray";
  views.hasTray = false;
  for (int start = 0; start < 2; ++start) {
    restart();
    EXPECT_EQ(widget().status, "No tray here: right-click for the menu");
    advance(4);
    EXPECT_EQ(widget().status, "");
    statusItem().click();
    EXPECT_EQ(widget().status, "");
  }
}

TEST_F(WidgetOnScreenTest, HiddenFromTheMenuItIsKeptWithWhatWasTyped) {
  widget().type("half a note");
  statusItem().choose("Hide floating widget");
  EXPECT_FALSE(widget().visible);
  EXPECT_FALSE(isWanted());
  statusItem().choose("Show floating widget");
  EXPECT_TRUE(widget().visible);
  EXPECT_EQ(widget().note, "half a note");
}

TEST_F(WidgetOnScreenTest, HiddenFromThePanelItIsLeftAlone) {
  app().setWidgetVisible(false, true);
  EXPECT_TRUE(widget().visible) << "it is going away by itself";
  EXPECT_FALSE(isWanted());
}

TEST_F(WidgetOnScreenTest, ClosedByTheUserItStaysAwayAlsoAfterARestart) {
  widget().close();
  EXPECT_FALSE(isWanted());
  app().refreshParticipants(true);
  loop.runPosted();
  EXPECT_FALSE(widget().visible);
  restart();
  EXPECT_EQ(views.quickNote, nullptr);
  EXPECT_FALSE(isWanted());
}

TEST_F(WidgetOnScreenTest, OnlyShowingCreatesThePanelAndMakesItWanted) {
  startsHidden();
  app().setWidgetVisible(false, false);
  app().refreshWidget();
  EXPECT_EQ(views.quickNote, nullptr);
  app().showWidget(std::nullopt);
  EXPECT_TRUE(isWanted());
}

TEST_F(WidgetOnScreenTest, ItCountsAsWantedUnlessABooleanSaysNo) {
  for (const FakeUserDefaults::Value& value :
       {FakeUserDefaults::Value("false"), FakeUserDefaults::Value(0.0)}) {
    defaults.values["VELKWidgetVisible"] = value;
    EXPECT_TRUE(app().widgetVisible());
  }
  defaults.values.erase("VELKWidgetVisible");
  EXPECT_TRUE(app().widgetVisible());
}

}  // namespace
}  // namespace notewick
