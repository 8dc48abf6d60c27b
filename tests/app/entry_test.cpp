#include "app/entry.h"

#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class EntryTest : public WorldTest {
 protected:
  ~EntryTest() override {
    fakeApplication().onRequest = [] {};
  }

  /// Starts with these arguments and gives what stands on standard output.
  std::string outputOf(const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    launch(arguments);
    return testing::internal::GetCapturedStdout();
  }

  const int runsBefore = fakeApplication().runs;
};

TEST_F(EntryTest, RunsTheSelfTestWhereverItIsAskedFor) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--selftest"},
                                                    {"--selftest", "-v"},
                                                    {"a", "--selftest"},
                                                    {"a", "--selftest", "b"}})
    EXPECT_THAT(linesOf(outputOf(arguments)), SizeIs(6));
}

TEST_F(EntryTest, TheSelfTestStartsNothingAndTouchesNoFile) {
  EXPECT_THAT(outputOf({"--selftest"}), HasSubstr("Base URL: "));
  EXPECT_EQ(delegate, nullptr);
  EXPECT_EQ(fakeApplication().runs, runsBefore);
  EXPECT_EQ(views.statusItem, nullptr);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(service.sessions, IsEmpty());
  EXPECT_THAT(deeds, IsEmpty());
  EXPECT_FALSE(files.folderExists(SUPPORT_DIR));
  EXPECT_THAT(loop.runningTimers(), IsEmpty());
}

TEST_F(EntryTest, OtherArgumentsStartTheProgram) {
  for (const auto* const argument : {"--SELFTEST", "-selftest", "file.txt"}) {
    EXPECT_EQ(outputOf({argument}), "");
    EXPECT_NE(views.statusItem, nullptr) << argument;
    quit();
  }
}

TEST_F(EntryTest, TheProgramIsAnAccessoryAndRunsOnce) {
  fakeApplication().accessory = false;
  launch();
  EXPECT_TRUE(fakeApplication().accessory);
  EXPECT_EQ(fakeApplication().runs, runsBefore + 1);
  EXPECT_EQ(notewick::app, &fakeApplication());
  EXPECT_EQ(delegate.use_count(), 1);
}

TEST_F(EntryTest, TheConstantsAreSetFirst) {
  setConstants("/somewhere/else");
  std::string atFirst;
  fakeApplication().onRequest = [&] { atFirst = SUPPORT_DIR; };
  launch();
  EXPECT_EQ(atFirst, "/home/ada/Library/Application Support/VELKNotewick");
}

TEST_F(EntryTest, TheSelfTestHasTheConstantsToo) {
  setConstants("/somewhere/else");
  outputOf({"--selftest"});
  EXPECT_EQ(SUPPORT_DIR, "/home/ada/Library/Application Support/VELKNotewick");
}

TEST_F(EntryTest, AProgramThatIsReleasedLeavesNothing) {
  launch();
  const std::weak_ptr<AppDelegate> program = delegate;
  releaseProgram();
  EXPECT_TRUE(program.expired());
  EXPECT_EQ(notewick::app, nullptr);
  EXPECT_EQ(views.statusItem, nullptr);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(loop.runningTimers(), IsEmpty());
  launch();
  EXPECT_THAT(service.sessions, SizeIs(2)) << "the client was kept";
}

}  // namespace
}  // namespace notewick
