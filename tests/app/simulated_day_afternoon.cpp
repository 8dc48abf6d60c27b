#include "tests/app/simulated_day.h"

namespace notewick {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

// 10:00. The service is away for two minutes and a half; the access token has run out meanwhile, so
// every try begins with a refresh of its own.
TEST_F(SimulatedDay, WorksThroughAnOutage) {
  service.backend.tokenLifetime = 60;
  runsSince(10, 0);
  service.isUnreachable("Could not connect to the server.");
  writesNote("Aisha Khan", "Phoned about the lease", 45);
  writesNote("Jonas Weber", "Home visit", 60);
  advance(151);
  EXPECT_THAT(asked(), SizeIs(3 + 4)) << "at once, and every minute";
  EXPECT_THAT(menu(), IsSupersetOf({"(2 notes waiting to send to VELK)", "Retry now"}));
  ASSERT_THAT(storedNotes(), SizeIs(2));
  EXPECT_EQ(storedNotes()[0].attempts, 4);
  EXPECT_EQ(storedNotes()[1].attempts, 3);
  EXPECT_EQ(storedNotes()[0].lastError, "Could not connect to the server.");
  chooses("Reload participants");
  expectLogged("api-error: Couldn't load participants: Could not connect to the server.");
  EXPECT_THAT(asked(), SizeIs(3));
  EXPECT_THAT(shown(), IsEmpty());

  service.recovers();
  chooses("Retry now");
  EXPECT_THAT(asked(), ElementsAre("POST auth/refresh", "POST auth/refresh",
                                   "POST case-notes/capture: Phoned about the lease",
                                   "POST case-notes/capture: Home visit"));
  EXPECT_THAT(shown(), ElementsAre(captured("Aisha Khan", 45), captured("Jonas Weber", 60)));
  advance(1);
  EXPECT_THAT(storedNotes(), IsEmpty());
  EXPECT_EQ(statusItem().title, " VELK");
}

// 12:00. The program ends with a session open and a note on its way, and starts again.
TEST_F(SimulatedDay, RestartsInTheMiddle) {
  runsSince(12, 0);
  reads("Peter Novak", 20);
  service.answers(CAPTURE_PATH, 503);
  writesNote("Li Wei", "Wrote the referral", 90);
  service.holdsAnswers();
  chooses("Retry now");
  quit();
  service.releasesAll();
  EXPECT_THAT(asked(), SizeIs(2));
  ASSERT_THAT(storedNotes(), SizeIs(1));
  EXPECT_EQ(storedNotes()[0].lastError, "Server busy (503)");

  launch();
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(asked(), ElementsAre("POST auth/refresh", "POST auth/refresh", "GET participants",
                                   "POST case-notes/capture: Wrote the referral"));
  EXPECT_THAT(shown(), ElementsAre(captured("Li Wei", 90)));
  seesNothing(61);
  EXPECT_THAT(shown(), ElementsAre(SEES_AGAIN)) << "the open session is lost";
}

// 13:00. The machine sleeps over lunch; a session that was open ends when it wakes.
TEST_F(SimulatedDay, SleepsOverLunch) {
  runsSince(13, 0);
  reads("Maria de la Cruz", 5);
  screen.clear();
  loop.sleepMachine(3600);
  EXPECT_THAT(shown(), ElementsAre(caught("Maria de la Cruz", 2)));
}

// 15:00. The service takes the refresh token no longer.
TEST_F(SimulatedDay, IsSignedOutByTheService) {
  service.backend.tokenLifetime = 60;
  runsSince(15, 0);
  service.backend.revokeTokens();
  service.backend.tokenLifetime = 3600;
  writesNote("Noor Haddad", "Phoned the school", 15);
  EXPECT_THAT(asked(), ElementsAre("POST auth/refresh"));
  EXPECT_THAT(shown(), IsEmpty()) << "the panel says enough";
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_THAT(menu(), IsSupersetOf({"Sign in to VELK…", "(1 note waiting to send to VELK)"}));

  advance(61);
  EXPECT_THAT(asked(), IsEmpty());
  EXPECT_EQ(storedNotes()[0].lastError, "Not signed in");
  signInWithPanel();
  EXPECT_THAT(asked(), ElementsAre("POST auth/login", "GET participants",
                                   "POST case-notes/capture: Phoned the school"));
  EXPECT_THAT(shown(), ElementsAre(general("Signed in as ada@velk.example."),
                                   general("Watching for work on 12 participants."),
                                   captured("Noor Haddad", 15)));
}

// 23:40 and around midnight: work of one day is one item, the next day's is another. What the day
// leaves behind is this and nothing else, for it names clients.
TEST_F(SimulatedDay, EndsAfterMidnight) {
  runsSince(23, 40);
  reads("Tobias Hargreave", 5);
  seesNothing(41);
  EXPECT_THAT(shown(), ElementsAre(caught("Tobias Hargreave", 2)));
  seesNothing(26);
  reads("Tobias Hargreave", 16);
  seesNothing(41);
  EXPECT_THAT(shown(), ElementsAre(caught("Tobias Hargreave", 4)));
  EXPECT_THAT(menu(), IsSupersetOf({"Log: Tobias Hargreave (~2 min, 2024-05-02)",
                                    "Log: Tobias Hargreave (~4 min, 2024-05-03)"}));

  widget().clickLog(0);
  confirms("Emergency call, first part", 120);
  EXPECT_THAT(asked(), ElementsAre("POST case-notes/capture: Emergency call, first part"));
  EXPECT_THAT(shown(), ElementsAre(captured("Tobias Hargreave", 120)));
  quit();
  EXPECT_THAT(files.paths(),
              ElementsAre(supportFile("captures-2024-05-03.log"), supportFile("outbox.json"),
                          supportFile("participants.json"), supportFile("pending.json"),
                          supportFile("watch.log")));
  EXPECT_EQ(text("captures-2024-05-03.log"),
            "00:12 · Tobias Hargreave · 120 min · 2024-05-02 · Emergency call, first part\n");
  EXPECT_THAT(storedNotes(), IsEmpty());
  ASSERT_THAT(storedPendings(), SizeIs(1));
  EXPECT_EQ(storedPendings()[0].day, "2024-05-03");
}

}  // namespace notewick
