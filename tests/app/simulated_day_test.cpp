#include "tests/app/simulated_day.h"

namespace notewick {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;
using testing::StartsWith;

// 08:00. A fresh machine: no folder, no token, no access to the screen.
TEST_F(SimulatedDay, BeginsWithTheFirstSignIn) {
  clock.setLocal({2024, 5, 2, 8, 0, 0});
  accessibility.trusted = false;
  launch();
  EXPECT_EQ(accessibility.prompts, 1);
  EXPECT_EQ(menu().front(), "Sign in to VELK…");
  signInPanel().type("ada@velk.example", "correct hoarse");
  signInPanel().pressSignIn();
  loop.runPosted();
  EXPECT_THAT(signInPanel().error, StartsWith("Invalid email or password. "));
  signInWithPanel();
  EXPECT_THAT(asked(), ElementsAre("POST auth/login", "POST auth/login", "GET participants"));
  EXPECT_THAT(shown(), ElementsAre(general("Signed in as ada@velk.example."),
                                   general("Watching for work on 12 participants.")));
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(widget().participants, SizeIs(12));

  samplesSee(1, AX_OFF);
  EXPECT_THAT(menu(), IsSupersetOf({std::string("(Signed in as ada@velk.example)"), FIX_TRUST}));
  chooses(FIX_TRUST);
  EXPECT_THAT(workspace.openedUrls, SizeIs(1));
  accessibility.trusted = true;
  seesNothing(1);
  EXPECT_THAT(shown(), ElementsAre(general("Turn VELK Notewick ON in the Accessibility list, then "
                                           "quit and reopen the app."),
                                   SEES_AGAIN));
  EXPECT_EQ(menu()[1], WATCHING);
}

// 08:00. Mail, then a document beside the records, then a short message. Tobias is last seen after
// 32 samples, Lena after 40, Zoe for half a minute only.
TEST_F(SimulatedDay, CatchesWorkOnMailAndDocuments) {
  runsSince(8, 0);
  const std::string mail = "RE: support hours — Tobias Hargreave - Outlook";
  const std::string records = "Hargreave, Tobias - RecordHub";
  const std::string plan = "Lena O'Keefe plan review.docx";
  screen.show("Outlook", {mail, "Calendar"});
  samplesSee(20, "app=Outlook titles=[\"" + mail + "\", \"Calendar\"] " +
                     "matches=[\"Tobias Hargreave\"]");
  screen.show("Word", {plan, records});
  samplesSee(12, "app=Word titles=[\"" + plan + "\", \"" + records + "\"] " +
                     "matches=[\"Tobias Hargreave\", \"Lena O'Keefe\"]");
  screen.show("Word", {plan});
  samplesSee(8, "app=Word titles=[\"" + plan + "\"] matches=[\"Lena O'Keefe\"]");
  screen.show("Messages", {"zoe abel"});
  samplesSee(3, R"(app=Messages titles=["zoe abel"] matches=["Zoe Abel"])");

  screen.show("Browser", {"Random unrelated window"});
  const std::string unrelated = R"(app=Browser titles=["Random unrelated window"] matches=[])";
  samplesSee(29, unrelated);
  EXPECT_THAT(shown(), IsEmpty());
  samplesSee(1, unrelated);
  EXPECT_THAT(shown(), ElementsAre(caught("Tobias Hargreave", 8)));
  samplesSee(8, unrelated);
  EXPECT_THAT(shown(), ElementsAre(caught("Lena O'Keefe", 5)));
  samplesSee(8, unrelated);

  const auto pendings = storedPendings();
  ASSERT_THAT(pendings, SizeIs(2));
  EXPECT_EQ(pendings[0].participant, "Tobias Hargreave");
  EXPECT_EQ(pendings[0].lastSeen - pendings[0].firstSeen, Date(31 * 15));
  EXPECT_THAT(pendings[0].evidence, ElementsAre(mail, records));
  EXPECT_THAT(pendings[1].evidence, ElementsAre(plan));
  EXPECT_THAT(menu(), IsSupersetOf({"Log: Tobias Hargreave (~8 min, 2024-05-02)",
                                    "Log: Lena O'Keefe (~5 min, 2024-05-02)"}));
  EXPECT_THAT(widget().rowTexts(), SizeIs(2));
}

// 08:30. Tobias from the menu, Lena from the widget's list.
TEST_F(SimulatedDay, ConfirmsWhatWasCaught) {
  files.put(supportFile("pending.json"), R"([
      {"id":"P","participant":"Tobias Hargreave","day":"2024-05-02","firstSeen":736322445,
       "lastSeen":736322910,"observedMinutes":8,"evidence":[]},
      {"id":"Q","participant":"Lena O'Keefe","day":"2024-05-01","firstSeen":736322745,
       "lastSeen":736323030,"observedMinutes":5,"evidence":[]}])");
  runsSince(8, 30);
  chooses("Log: Tobias Hargreave (~8 min, 2024-05-02)");
  confirms("Answered about support hours", 15);
  EXPECT_EQ(widget().status, "Sent — finish it on VELK");
  EXPECT_EQ(statusItem().title, " VELK (1)");

  widget().clickLog(0);
  widget().type("Reviewed the plan");
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
  confirms("Reviewed the plan", 30);
  EXPECT_THAT(asked(), ElementsAre("POST case-notes/capture: Answered about support hours",
                                   "POST case-notes/capture: Reviewed the plan"));
  EXPECT_THAT(shown(), ElementsAre(captured("Tobias Hargreave", 15), captured("Lena O'Keefe", 30)));
  EXPECT_THAT(storedPendings(), IsEmpty());
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_EQ(service.backend.notes[1], nlohmann::json({{"participantId", "2"},
                                                      {"input", "Reviewed the plan"},
                                                      {"durationMinutes", 30},
                                                      {"sessionDate", "2024-05-01"}}));
}

// 08:45. Private business: what was on screen before and during the pause is forgotten.
TEST_F(SimulatedDay, PausesTheWatching) {
  runsSince(8, 45);
  reads("Grace Okafor", 8);
  chooses("Pause watching");
  EXPECT_EQ(menu()[1], "(Paused)");
  samples(20);
  chooses("Resume watching");
  EXPECT_EQ(menu()[1], WATCHING);
  seesNothing(80);
  EXPECT_THAT(menu(), IsSupersetOf({NOTHING_SPOTTED}));
}

// 09:15. Access to the screen is taken away while a session is open; it ends all the same.
TEST_F(SimulatedDay, LosesTheTrust) {
  runsSince(9, 15);
  reads("Samuel Ito", 4);
  accessibility.trusted = false;
  samplesSee(40, AX_OFF);
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_EQ(menu()[1], FIX_TRUST);
  samplesSee(1, AX_OFF);
  EXPECT_THAT(shown(), ElementsAre(caught("Samuel Ito", 1)));
  accessibility.trusted = true;
  seesNothing(1);
  EXPECT_THAT(shown(), ElementsAre(SEES_AGAIN));
  widget().clickSkip(0);
  EXPECT_THAT(menu(), IsSupersetOf({WATCHING, NOTHING_SPOTTED}));
  EXPECT_THAT(storedPendings(), IsEmpty());
}

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
