#include <gmock/gmock.h>

#include "tests/app/simulated_day.h"

namespace notewick {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const std::string AX_OFF = "ax=OFF (no screen access — grant Accessibility in System Settings)";

}  // namespace

TEST_F(SimulatedDay, FromTheFirstSignInUntilAfterMidnight) {
  signsInForTheFirstTime();
  readsMailAndDocuments();
  confirmsWhatWasCaught();
  pausesTheWatching();
  losesTheTrust();
  worksThroughAnOutage();
  restartsInTheMiddle();
  isSignedOutByTheService();
  worksUntilAfterMidnight();
  leavesEverythingInOrder();
}

// 08:00. A fresh machine: no folder, no token, no access to the screen.
void SimulatedDay::signsInForTheFirstTime() {
  SCOPED_TRACE("the first sign-in");
  accessibility.trusted = false;
  launch();
  EXPECT_EQ(accessibility.prompts, 1);
  expectMenu({"Sign in to VELK…", "-", NOTHING_SPOTTED, "-", "Log work now (call, visit…)",
              "Hide floating widget", "Open my case notes in VELK", "-", "Pause watching",
              "Reload participants", "Start at login", "-", "Quit VELK Notewick"});
  wasAsked({});

  signInPanel().type(" ada@velk.example", "correct hoarse");
  signInPanel().pressSignIn();
  loop.runPosted();
  EXPECT_EQ(signInPanel().error,
            "Invalid email or password. If you sign in to VELK with Google, set a password first "
            "via “Forgot password” at https://velk.example/login.");
  signInPanel().type(" ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  loop.runPosted();
  EXPECT_EQ(views.signIn, nullptr);
  wasAsked({"POST auth/login", "POST auth/login", "GET participants as access-1"});
  wasTold({general("Signed in as ada@velk.example."),
           general("Watching for work on 12 participants.")});
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(widget().participants,
              ElementsAre("Aisha Khan", "Grace Okafor", "Jonas Weber", "Lena O'Keefe", "Li Wei",
                          "Maria de la Cruz", "Noor Haddad", "Peter Novak", "René Dupont",
                          "Samuel Ito", "Tobias Hargreave", "Zoe Abel"));

  samplesSee(1, AX_OFF);
  expectMenu(signedInMenu("⚠️ Can't see your screen yet — click to fix", {NOTHING_SPOTTED}));
  statusItem().choose("⚠️ Can't see your screen yet — click to fix");
  EXPECT_THAT(workspace.openedUrls, SizeIs(1));
  accessibility.trusted = true;
  samplesSeeNothing(1);
  wasTold(
      {general("Turn VELK Notewick ON in the Accessibility list, then quit and reopen the app."),
       general("Screen access on — now watching for participant work.")});
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  expectWatchLog();
}

// 08:00:30. Mail, then a document beside the records, then a short message.
void SimulatedDay::readsMailAndDocuments() {
  SCOPED_TRACE("mail and documents");
  screen.show("Outlook", {"RE: support hours — Tobias Hargreave - Outlook", "Calendar"});
  samplesSee(20, R"(app=Outlook titles=["RE: support hours — Tobias Hargreave - Outlook", )"
                 R"("Calendar"] matches=["Tobias Hargreave"])");
  screen.show("Word", {"Lena O'Keefe plan review.docx", "Hargreave, Tobias - RecordHub"});
  samplesSee(12,
             R"(app=Word titles=["Lena O'Keefe plan review.docx", )"
             R"("Hargreave, Tobias - RecordHub"] matches=["Tobias Hargreave", "Lena O'Keefe"])");
  screen.show("Word", {"Lena O'Keefe plan review.docx"});
  samplesSee(8, R"(app=Word titles=["Lena O'Keefe plan review.docx"] matches=["Lena O'Keefe"])");
  screen.show("Messages", {"zoe abel"});
  samplesSee(3, R"(app=Messages titles=["zoe abel"] matches=["Zoe Abel"])");
  wasTold({});

  // Tobias was last seen at 08:08:30, Lena at 08:10:30, Zoe for half a minute only.
  screen.show("Browser", {"Random unrelated window"});
  const std::string unrelated = R"(app=Browser titles=["Random unrelated window"] matches=[])";
  samplesSee(29, unrelated);
  wasTold({});
  samplesSee(1, unrelated);
  wasTold({caught("Tobias Hargreave", 8)});
  samplesSee(8, unrelated);
  wasTold({caught("Lena O'Keefe", 5)});
  samplesSee(8, unrelated);
  wasTold({});

  const auto pendings = storedPendings();
  ASSERT_THAT(pendings, SizeIs(2));
  EXPECT_EQ(pendings[0].id, FakeUuidSource::nth(1));
  EXPECT_EQ(pendings[0].participant, "Tobias Hargreave");
  EXPECT_EQ(pendings[0].day, "2024-05-02");
  expectSeen(pendings[0], {2024, 5, 2, 8, 0, 45}, {2024, 5, 2, 8, 8, 30});
  EXPECT_EQ(pendings[0].observedMinutes, 8);
  EXPECT_THAT(pendings[0].evidence, ElementsAre("RE: support hours — Tobias Hargreave - Outlook",
                                                "Hargreave, Tobias - RecordHub"));
  EXPECT_EQ(pendings[1].participant, "Lena O'Keefe");
  EXPECT_THAT(pendings[1].evidence, ElementsAre("Lena O'Keefe plan review.docx"));
  expectMenu(signedInMenu(WATCHING, {"Log: Tobias Hargreave (~8 min, 2024-05-02)",
                                     "Log: Lena O'Keefe (~5 min, 2024-05-02)"}));
  EXPECT_EQ(statusItem().title, " VELK (2)");
  EXPECT_THAT(widget().rowTexts(), ElementsAre("Tobias Hargreave · ~8m · 2024-05-02",
                                               "Lena O'Keefe · ~5m · 2024-05-02"));
  wasAsked({});
  expectWatchLog();
}

// 08:30. Tobias from the menu, Lena from the widget's list.
void SimulatedDay::confirmsWhatWasCaught() {
  SCOPED_TRACE("confirming");
  nothingHappensUntil(8, 30);
  statusItem().choose("Log: Tobias Hargreave (~8 min, 2024-05-02)");
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().hint, "On screen ≈ 8 min — you set the duration.");
  confirms("Answered about support hours", 15);
  EXPECT_EQ(widget().status, "Sent — finish it on VELK");
  EXPECT_EQ(statusItem().title, " VELK (1)");

  widget().clickLog(0);
  widget().type("Reviewed the plan");
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
  EXPECT_EQ(workspace.beeps, 1);
  confirms("Reviewed the plan", 30);
  wasAsked({"POST case-notes/capture as access-1: Answered about support hours",
            "POST case-notes/capture as access-1: Reviewed the plan"});
  wasTold({captured("Tobias Hargreave", 15), captured("Lena O'Keefe", 30)});
  EXPECT_THAT(storedPendings(), IsEmpty());
  advance(0.02);
  EXPECT_THAT(storedNotes(), IsEmpty());
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_EQ(text("captures-2024-05-02.log"),
            "08:30 · Tobias Hargreave · 15 min · 2024-05-02 · Answered about support hours\n"
            "08:30 · Lena O'Keefe · 30 min · 2024-05-02 · Reviewed the plan\n");
}

// 08:45. Private business: what was on screen before and during the pause is forgotten.
void SimulatedDay::pausesTheWatching() {
  SCOPED_TRACE("a pause");
  nothingHappensUntil(8, 45);
  screen.show("Mail", {"Grace Okafor"});
  samplesSee(8, R"(app=Mail titles=["Grace Okafor"] matches=["Grace Okafor"])");
  statusItem().choose("Pause watching");
  auto menu = signedInMenu("(Paused)", {NOTHING_SPOTTED});
  std::ranges::replace(menu, std::string("Pause watching"), std::string("Resume watching"));
  expectMenu(menu);
  samplesSeeNothing(20);
  statusItem().choose("Resume watching");
  screen.show("Mail", {"Inbox"});
  samplesSee(4, R"(app=Mail titles=["Inbox"] matches=[])");
  nothingHappensUntil(9, 15);
  wasTold({});
  wasAsked({});
  EXPECT_THAT(storedPendings(), IsEmpty());
  expectWatchLog();
}

// 09:15. Access to the screen is taken away while a session is open; it ends all the same.
void SimulatedDay::losesTheTrust() {
  SCOPED_TRACE("lost trust");
  screen.show("RecordHub", {"Ito, Samuel", "Search", "Tasks", "Notes", "Help"});
  samplesSee(4, R"(app=RecordHub titles=["Ito, Samuel", "Search", "Tasks", "Notes"] )"
                R"(matches=["Samuel Ito"])");
  accessibility.trusted = false;
  samplesSee(40, AX_OFF);
  wasTold({});
  expectMenu(signedInMenu("⚠️ Can't see your screen yet — click to fix", {NOTHING_SPOTTED}));
  samplesSee(1, AX_OFF);
  wasTold({caught("Samuel Ito", 1)});
  accessibility.trusted = true;
  screen.clear();
  samplesSeeNothing(1);
  wasTold({general("Screen access on — now watching for participant work.")});
  expectMenu(signedInMenu(WATCHING, {"Log: Samuel Ito (~1 min, 2024-05-02)"}));
  widget().clickSkip(0);
  expectMenu(signedInMenu(WATCHING, {NOTHING_SPOTTED}));
  EXPECT_THAT(storedPendings(), IsEmpty());
  expectWatchLog();
}

}  // namespace notewick
