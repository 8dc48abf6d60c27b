#include "app/entry.h"

#include <gmock/gmock.h>

#include <iostream>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class EntryTest : public WorldTest {
 protected:
  EntryTest() { setConstants("/somewhere/else"); }
  ~EntryTest() override {
    fakeApplication().onRequest = [] {};
  }

  const std::string supportFolder = "/home/ada/Library/Application Support/VELKNotewick";
  const int runsBefore = fakeApplication().runs;
};

TEST_F(EntryTest, TheSelfTestStartsNothingAndTouchesNoFile) {
  testing::internal::CaptureStdout();
  launch({"a", "--selftest"});
  EXPECT_THAT(linesOf(testing::internal::GetCapturedStdout()), SizeIs(6));
  EXPECT_EQ(SUPPORT_DIR, supportFolder);
  EXPECT_EQ(delegate, nullptr);
  EXPECT_EQ(fakeApplication().runs, runsBefore);
  EXPECT_THAT(service.sessions, IsEmpty());
  EXPECT_THAT(trace, IsEmpty());
}

TEST_F(EntryTest, ASelfTestThatCannotPrintFails) {
  std::cout.setstate(std::ios::badbit);
  EXPECT_EQ(start({"--selftest"}), 1);
  std::cout.clear();
}

TEST_F(EntryTest, OtherwiseTheProgramRunsOnceAsAnAccessoryAndPrintsNothing) {
  fakeApplication().accessory = false;
  testing::internal::CaptureStdout();
  launch({"-selftest"});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_NE(views.statusItem, nullptr);
  EXPECT_TRUE(fakeApplication().accessory);
  EXPECT_EQ(fakeApplication().runs, runsBefore + 1);
  EXPECT_EQ(notewick::app, &fakeApplication());
  EXPECT_EQ(delegate.use_count(), 1);
}

TEST_F(EntryTest, TheConstantsAreSetFirst) {
  std::string atFirst;
  fakeApplication().onRequest = [&] { atFirst = SUPPORT_DIR; };
  launch();
  EXPECT_EQ(atFirst, supportFolder);
}

TEST_F(EntryTest, AProgramThatIsReleasedLeavesNothing) {
  launch();
  const std::weak_ptr<AppDelegate> program = delegate;
  releaseProgram();
  EXPECT_TRUE(program.expired());
  EXPECT_EQ(notewick::app, nullptr);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(loop.runningTimers(), IsEmpty());
  launch();
  EXPECT_THAT(service.sessions, SizeIs(2)) << "one client for each program";
}

}  // namespace
}  // namespace notewick
