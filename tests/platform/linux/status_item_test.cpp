#include "platform/linux/status_item.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMessageBox>

#include "platform/linux/views.h"
#include "tests/support/fake_user_defaults.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

struct Target : StatusItemTarget {
  void menuItemChosen(const MenuItem& item) override { chosen.push_back(item.title); }
  void statusItemClicked() override {}

  std::vector<std::string> chosen;
};

/// A desktop without a tray: no watcher on the session bus, no X server.
class StatusItemWithoutATray : public testing::Test {
 protected:
  void choose(int index) const { item_.windowMenu()->actions().at(index)->trigger(); }

  std::shared_ptr<Target> target_ = std::make_shared<Target>();
  mutable QtStatusItem item_{{"symbol", "VELK Notewick", " VELK"}, target_, 20ms};
};

const MenuItem RETRY = {"Retry now", MenuAction::retryOutbox, "", std::nullopt, false};
const MenuItem QUIT = {"Quit", MenuAction::terminate, "q", std::nullopt, false};

TEST_F(StatusItemWithoutATray, SaysSoOnceOnStandardError) {
  testing::internal::CaptureStderr();
  item_.setMenu({RETRY});
  // Of two timers the one that was started first with the shorter time fires first.
  bool later = false;
  QTimer::singleShot(100ms, &item_, [&] { later = true; });
  EXPECT_TRUE(waitUntil([&] { return later; }));
  item_.setTitle(" VELK (2)", 2);
  catchUp();
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(said.find("No tray on this desktop"), 0U);
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1);
}

TEST(StatusItem, SaysNothingBeforeATrayHadTimeToCome) {
  testing::internal::CaptureStderr();
  const QtStatusItem patient({"symbol", "VELK Notewick", " VELK"}, {}, 10s);
  QApplication::processEvents();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(StatusItemWithoutATray, OffersTheMenuToAWindowWhereItMayBeReplacedWhileItIsOpen) {
  item_.setMenu({RETRY, QUIT});
  const auto open = item_.windowMenu();
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(open->actions().size(), 2);
  item_.setMenu({QUIT});
  open->actions().at(0)->trigger();
  EXPECT_EQ(target_->chosen, std::vector<std::string>{"Retry now"});
}

TEST_F(StatusItemWithoutATray, TerminatesWithoutATarget) {
  item_.setMenu({QUIT});
  target_.reset();
  QTimer::singleShot(0, &item_, [this] { choose(0); });
  QTimer::singleShot(10s, qApp, [] { QApplication::exit(1); });
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(StatusItemWithoutATray, DropsChoicesWhenTheTargetIsGone) {
  item_.setMenu({RETRY});
  const std::weak_ptr<Target> gone = target_;
  target_.reset();
  choose(0);
  EXPECT_TRUE(gone.expired());
}

TEST(StatusItem, OffersAMenuThatOutlivesIt) {
  const auto target = std::make_shared<Target>();
  auto item = std::make_unique<QtStatusItem>(StatusItemAppearance{}, target);
  item->setMenu({RETRY});
  const auto open = item->windowMenu();
  item.reset();
  open->actions().at(0)->trigger();
  EXPECT_TRUE(target->chosen.empty());
}

TEST(TheProgramsWindows, AllCarryTheSymbol) {
  QApplication::setWindowIcon(QIcon());
  FakeUserDefaults userDefaults;
  const auto item = QtViews(userDefaults).makeStatusItem({"symbol", "VELK Notewick", " VELK"}, {});
  EXPECT_FALSE(QMessageBox().windowIcon().isNull());
}

}  // namespace
}  // namespace notewick
