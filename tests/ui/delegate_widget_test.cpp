#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;

const std::string WISH = "VELKWidgetVisible";

class WidgetOnScreenTest : public WorldTest {
 protected:
  WidgetOnScreenTest() {
    signIn();
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    launch();
  }

  [[nodiscard]] bool wish() const { return std::get<bool>(defaults.values.at(WISH)); }
};

TEST_F(WidgetOnScreenTest, ItIsMadeWhenItIsFirstShown) {
  defaults.setBoolean(WISH, false);
  restart();
  EXPECT_EQ(views.quickNote, nullptr);
  statusItem().choose("Show floating widget");
  EXPECT_TRUE(widget().visible);
}

TEST_F(WidgetOnScreenTest, ShowingFillsItWithTheListsOfTheMoment) {
  defaults.setBoolean(WISH, false);
  restart();
  app().pendings = {{"P", "Lena O'Keefe", "2024-05-02", Date(0), Date(60), 12, {}}};
  app().outbox = {{"N", "1", "Tobias Hargreave", "x", 30, "2024-05-02"}};
  app().showWidget(std::nullopt);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe", "Tobias Hargreave"));
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Lena O'Keefe · ~12m · 2024-05-02"));
  EXPECT_EQ(widget().status, "1 queued — will retry");
}

TEST_F(WidgetOnScreenTest, ShowingRemembersTheWishAndTurnsTheMenuItem) {
  defaults.setBoolean(WISH, false);
  restart();
  app().showWidget(std::nullopt);
  EXPECT_TRUE(wish());
  EXPECT_NE(statusItem().find("Hide floating widget"), nullptr);
}

TEST_F(WidgetOnScreenTest, HidingFromTheMenuOrdersThePanelOut) {
  statusItem().choose("Hide floating widget");
  EXPECT_FALSE(widget().visible);
  EXPECT_FALSE(wish());
  EXPECT_NE(statusItem().find("Show floating widget"), nullptr);
}

TEST_F(WidgetOnScreenTest, ShowingAgainMakesNothingAnew) {
  const auto* const panel = &widget();
  widget().type("half a note");
  statusItem().choose("Hide floating widget");
  statusItem().choose("Show floating widget");
  EXPECT_EQ(&widget(), panel);
  EXPECT_EQ(views.quickNotesMade, 1);
  EXPECT_EQ(widget().note, "half a note");
  EXPECT_TRUE(widget().visible);
}

TEST_F(WidgetOnScreenTest, HidingWithoutAWidgetOnlyRemembersTheWish) {
  defaults.setBoolean(WISH, false);
  restart();
  app().setWidgetVisible(false, false);
  EXPECT_EQ(views.quickNote, nullptr);
  EXPECT_FALSE(wish());
}

TEST_F(WidgetOnScreenTest, HiddenFromThePanelItIsLeftAlone) {
  const auto menus = statusItem().menusSet;
  app().setWidgetVisible(false, true);
  EXPECT_TRUE(widget().visible) << "it is going away by itself";
  EXPECT_FALSE(wish());
  EXPECT_GT(statusItem().menusSet, menus);
}

TEST_F(WidgetOnScreenTest, ClosedByTheUserItStaysAway) {
  const auto* const panel = &widget();
  widget().close();
  EXPECT_FALSE(wish());
  EXPECT_NE(statusItem().find("Show floating widget"), nullptr);
  app().refreshParticipants(true);
  loop.runPosted();
  EXPECT_FALSE(widget().visible);
  statusItem().choose("Show floating widget");
  EXPECT_EQ(&widget(), panel);
  EXPECT_TRUE(widget().visible);
}

TEST_F(WidgetOnScreenTest, TheWishOutlivesARestart) {
  widget().close();
  restart();
  EXPECT_EQ(views.quickNote, nullptr);
  EXPECT_NE(statusItem().find("Show floating widget"), nullptr);
}

TEST_F(WidgetOnScreenTest, QuittingIsNoClosing) {
  quit();
  EXPECT_TRUE(wish());
}

TEST_F(WidgetOnScreenTest, RefreshingWithoutAWidgetDoesNothing) {
  defaults.setBoolean(WISH, false);
  restart();
  app().refreshWidget();
  EXPECT_EQ(views.quickNote, nullptr);
}

}  // namespace
}  // namespace notewick
