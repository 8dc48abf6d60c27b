#include "doctor/file_findings.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

constexpr ListFacts MISSING{false, std::nullopt};
constexpr ListFacts DAMAGED{true, std::nullopt};

TEST(FileFindings, ListsAreCounted) {
  EXPECT_EQ(aboutParticipants({true, 12}), fine("12"));
  EXPECT_EQ(aboutCaughtWork({true, 3}), fine("3"));
  EXPECT_EQ(aboutCaughtWork(MISSING), fine("none"));
  EXPECT_EQ(aboutNotes({true, 0}), fine("none waiting"));
  EXPECT_EQ(aboutNotes(MISSING), fine("none waiting"));
}

TEST(FileFindings, NotesThatWaitAndParticipantsThatAreMissingWantACommand) {
  EXPECT_EQ(aboutNotes({true, 2}), toDo("2 waiting. Choose “Retry now” in Notewick's menu."));
  for (const ListFacts& none : {MISSING, ListFacts{true, 0}}) {
    EXPECT_EQ(
        aboutParticipants(none),
        toDo("none. Choose “Reload participants” in Notewick's menu when you are signed in."));
  }
}

TEST(FileFindings, AFileThatIsNoListIsToBeKept) {
  EXPECT_EQ(
      aboutNotes(DAMAGED),
      toDo("outbox.json is no list. Keep a copy of it: Notewick begins an empty one over it."));
  EXPECT_EQ(
      aboutCaughtWork(DAMAGED),
      toDo("pending.json is no list. Keep a copy of it: Notewick begins an empty one over it."));
  EXPECT_EQ(aboutParticipants(DAMAGED),
            toDo("participants.json is no list. Choose “Reload participants”."));
}

TEST(FileFindings, FilesAreToldWithSizesAndRightsOthersByNumberOnly) {
  EXPECT_EQ(aboutFiles(std::nullopt, {}), fine("none yet"));
  EXPECT_EQ(
      aboutFiles(0700, {{"captures-2026-03-01.log", 100, 0600},
                        {"captures-2026-03-02.log", 20, 0600},
                        {"outbox.json", 2, 0600},
                        {"Tobias Hargreave.txt", 7, 0644}}),
      fine("folder 0700, outbox.json 2 bytes 0600, 2 captures logs 120 bytes 0600, 1 other files "
           "7 bytes 0644"));
}

TEST(FileFindings, FilesThatOthersCanReadAreToBeNarrowed) {
  const std::string advice = ". Others can read them: quit Notewick and start it again.";
  EXPECT_EQ(aboutFiles(0755, {}), toDo("folder 0755" + advice));
  EXPECT_EQ(aboutFiles(0700, {{"watch.log", 9, 0640}}),
            toDo("folder 0700, watch.log 9 bytes 0640" + advice));
  EXPECT_EQ(aboutFiles(0700, {{"captures-2026-03-01.log", 9, 0604}}),
            toDo("folder 0700, 1 captures logs 9 bytes 0604" + advice));
}

TEST(FileFindings, StartAtLoginIsOnWhereNothingSwitchesItsEntryOff) {
  EXPECT_EQ(aboutStartAtLogin(std::nullopt), fine("off"));
  EXPECT_EQ(aboutStartAtLogin("[Desktop Entry]\nExec=\"/usr/bin/notewick\"\n"), fine("on"));
  for (const char* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false"}) {
    EXPECT_EQ(aboutStartAtLogin(std::string("[Desktop Entry]\n") + off),
              fine("off, by the desktop's settings"));
  }
}

}  // namespace
}  // namespace notewick
