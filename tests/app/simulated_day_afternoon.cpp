#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "model/record_json.h"
#include "tests/app/simulated_day.h"

namespace notewick {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const std::string TOBIAS_ON_SCREEN =
    R"(app=Mail titles=["Tobias Hargreave"] matches=["Tobias Hargreave"])";

}  // namespace

// 10:00. The service is away for two minutes and a half; the access token has run out meanwhile, so
// every try begins with a refresh of its own.
void SimulatedDay::worksThroughAnOutage() {
  SCOPED_TRACE("an outage");
  nothingHappensUntil(10, 0);
  service.isUnreachable("Could not connect to the server.");
  writesNote("Aisha Khan", "Phoned about the lease", 45);
  wasAsked({"POST auth/refresh"});
  writesNote("Jonas Weber", "Home visit", 60);
  wasAsked({"POST auth/refresh", "POST auth/refresh"});
  expectMenu(signedInMenu(
      WATCHING, {NOTHING_SPOTTED, "-", "(2 notes waiting to send to VELK)", "Retry now"}));
  EXPECT_EQ(statusItem().title, " VELK (2)");
  advance(150);
  wasAsked({"POST auth/refresh", "POST auth/refresh", "POST auth/refresh", "POST auth/refresh"});
  app().refreshWidget();
  EXPECT_EQ(widget().status, "2 queued — will retry");
  statusItem().choose("Reload participants");
  loop.runPosted();
  expectLogged("api-error: Couldn't load participants: Could not connect to the server.");
  wasAsked({"POST auth/refresh", "POST auth/refresh", "POST auth/refresh"});
  wasTold({});

  advance(1);
  ASSERT_THAT(storedNotes(), SizeIs(2));
  EXPECT_EQ(storedNotes()[0].attempts, 5);
  EXPECT_EQ(storedNotes()[0].lastError, "Could not connect to the server.");
  EXPECT_EQ(storedNotes()[1].attempts, 4);

  service.recovers();
  statusItem().choose("Retry now");
  loop.runPosted();
  wasAsked({"POST auth/refresh", "POST auth/refresh",
            "POST case-notes/capture as access-2: Phoned about the lease",
            "POST case-notes/capture as access-3: Home visit"});
  wasTold({captured("Aisha Khan", 45), captured("Jonas Weber", 60)});
  advance(0.02);
  EXPECT_THAT(storedNotes(), IsEmpty());
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  expectWatchLog();
}

// 12:00. The program ends with a session open and a note on its way, and starts again.
void SimulatedDay::restartsInTheMiddle() {
  SCOPED_TRACE("a restart");
  nothingHappensUntil(11, 55);
  screen.show("Mail", {"Peter Novak"});
  samplesSee(20, R"(app=Mail titles=["Peter Novak"] matches=["Peter Novak"])");
  service.answers(REFRESH_PATH, 503);
  writesNote("Li Wei", "Wrote the referral", 90);
  wasAsked({"POST auth/refresh"});
  service.holdsAnswers();
  statusItem().choose("Retry now");
  quit();
  service.releasesAll();
  wasAsked({"POST auth/refresh"});
  ASSERT_THAT(storedNotes(), SizeIs(1));
  EXPECT_EQ(storedNotes()[0].lastError, "Refresh failed (503)");

  launch();
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_TRUE(widget().visible);
  wasAsked({"POST auth/refresh", "POST auth/refresh", "GET participants as access-5",
            "POST case-notes/capture as access-6: Wrote the referral"});
  wasTold({captured("Li Wei", 90)});
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  screen.clear();
  samplesSeeNothing(1);
  wasTold({general("Screen access on — now watching for participant work.")});
  samplesSeeNothing(60);
  wasTold({});
  EXPECT_THAT(app().sessions, IsEmpty()) << "the open session is lost";
  expectWatchLog();
}

// 15:00. The service takes the refresh token no longer.
void SimulatedDay::isSignedOutByTheService() {
  SCOPED_TRACE("an expired session");
  nothingHappensUntil(15, 0);
  service.backend.revokeTokens();
  writesNote("Noor Haddad", "Phoned the school", 15);
  wasAsked({"POST auth/refresh"});
  wasTold({});
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  expectMenu({"Sign in to VELK…", "-", NOTHING_SPOTTED, "-", "(1 note waiting to send to VELK)",
              "Retry now", "-", "Log work now (call, visit…)", "Hide floating widget",
              "Open my case notes in VELK", "-", "Pause watching", "Reload participants",
              "Start at login", "-", "Quit VELK Notewick"});
  ASSERT_THAT(storedNotes(), SizeIs(1));
  EXPECT_EQ(app().outbox[0].lastError, "Session expired — please sign in again");

  advance(61);
  wasAsked({});
  EXPECT_EQ(storedNotes()[0].lastError, "Not signed in");
  EXPECT_EQ(views.signInsAlive, 1);
  signInWithPanel();
  wasAsked({"POST auth/login", "GET participants as access-7",
            "POST case-notes/capture as access-7: Phoned the school"});
  wasTold({general("Signed in as ada@velk.example."),
           general("Watching for work on 12 participants."), captured("Noor Haddad", 15)});
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  expectWatchLog();
}

// 16:00, 17:00 and around midnight: two sessions of one day are one item, the next day's is
// another.
void SimulatedDay::worksUntilAfterMidnight() {
  SCOPED_TRACE("midnight");
  nothingHappensUntil(16, 0);
  lateSamplesCome();
  screen.show("Mail", {"Tobias Hargreave"});
  samplesSee(5, TOBIAS_ON_SCREEN);
  nothingHappensUntil(17, 0);
  lateSamplesCome();
  wasTold({caught("Tobias Hargreave", 2)});
  screen.show("Mail", {"Tobias Hargreave"});
  samplesSee(9, TOBIAS_ON_SCREEN);
  nothingHappensUntil(23, 58);
  lateSamplesCome();
  wasTold({caught("Tobias Hargreave", 3)});
  expectMenu(signedInMenu(WATCHING, {"Log: Tobias Hargreave (~5 min, 2024-05-02)"}));

  screen.show("Mail", {"Tobias Hargreave"});
  samplesSee(16, TOBIAS_ON_SCREEN);
  screen.clear();
  samplesSeeNothing(41);
  wasTold({caught("Tobias Hargreave", 4)});
  expectMenu(signedInMenu(WATCHING, {"Log: Tobias Hargreave (~5 min, 2024-05-02)",
                                     "Log: Tobias Hargreave (~4 min, 2024-05-03)"}));
  EXPECT_EQ(statusItem().title, " VELK (2)");

  widget().clickLog(0);
  confirms("Emergency call, first part", 120);
  wasAsked(
      {"POST auth/refresh", "POST case-notes/capture as access-8: Emergency call, first part"});
  wasTold({captured("Tobias Hargreave", 120)});
  expectMenu(signedInMenu(WATCHING, {"Log: Tobias Hargreave (~4 min, 2024-05-03)"}));
  expectWatchLog();
}

// What the day leaves behind, on the disk and at the service.
void SimulatedDay::leavesEverythingInOrder() {
  SCOPED_TRACE("the files");
  quit();
  EXPECT_THAT(
      files.paths(),
      ElementsAre(supportFile("captures-2024-05-02.log"), supportFile("captures-2024-05-03.log"),
                  supportFile("outbox.json"), supportFile("participants.json"),
                  supportFile("pending.json"), supportFile("watch.log")));
  EXPECT_EQ(text("captures-2024-05-02.log"),
            "08:30 · Tobias Hargreave · 15 min · 2024-05-02 · Answered about support hours\n"
            "08:30 · Lena O'Keefe · 30 min · 2024-05-02 · Reviewed the plan\n"
            "10:00 · Aisha Khan · 45 min · 2024-05-02 · Phoned about the lease\n"
            "10:00 · Jonas Weber · 60 min · 2024-05-02 · Home visit\n"
            "12:00 · Li Wei · 90 min · 2024-05-02 · Wrote the referral\n"
            "15:00 · Noor Haddad · 15 min · 2024-05-02 · Phoned the school\n");
  EXPECT_EQ(text("captures-2024-05-03.log"),
            "00:12 · Tobias Hargreave · 120 min · 2024-05-02 · Emergency call, first part\n");
  EXPECT_THAT(storedNotes(), IsEmpty());
  EXPECT_EQ(decodeRecords<Participant>(text("participants.json")).value(),
            service.backend.participants);

  ASSERT_THAT(storedPendings(), SizeIs(1));
  const auto pending = storedPendings().front();
  EXPECT_EQ(pending.participant, "Tobias Hargreave");
  EXPECT_EQ(pending.day, "2024-05-03");
  EXPECT_EQ(pending.observedMinutes, 4);
  expectSeen(pending, {2024, 5, 2, 23, 58, 15}, {2024, 5, 3, 0, 2, 0});

  std::vector<std::string> notes;
  for (const auto& note : service.backend.notes)
    notes.push_back(note["sessionDate"].get<std::string>() + " " +
                    note["participantId"].get<std::string>() + " " +
                    std::to_string(note["durationMinutes"].get<int>()) + " " +
                    note["input"].get<std::string>());
  EXPECT_THAT(
      notes,
      ElementsAre("2024-05-02 1 15 Answered about support hours",
                  "2024-05-02 2 30 Reviewed the plan", "2024-05-02 7 45 Phoned about the lease",
                  "2024-05-02 8 60 Home visit", "2024-05-02 10 90 Wrote the referral",
                  "2024-05-02 11 15 Phoned the school",
                  "2024-05-02 1 120 Emergency call, first part"));
  EXPECT_EQ(secrets.size(), 1u);
  expectWatchLog();
}

}  // namespace notewick
