#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "model/records.h"
#include "platform/ports.h"
#include "tests/support/fake_application.h"
#include "tests/support/fake_clock.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fake_files.h"
#include "tests/support/fake_http_session.h"
#include "tests/support/fake_main_loop.h"
#include "tests/support/fake_secret_store.h"
#include "tests/support/fake_user_defaults.h"
#include "tests/support/fake_views.h"
#include "tests/support/trace.h"

namespace notewick {

class AppDelegate;

/// The participants of a list of names of two words, with the ids "1", "2", ...
[[nodiscard]] std::vector<Participant> participantsNamed(const std::vector<std::string>& names);

/// The lines of a text, without their line feeds.
[[nodiscard]] std::vector<std::string> linesOf(const std::string& text);

/// Everything outside the program: a desktop, a network and a service, on Thursday 2024-05-02 at
/// 09:00 where the wall clock is two hours ahead of UTC, on a machine whose timers fire up to 400
/// ms late. One at a time; making it registers its ports and sets the constants, destroying it ends
/// the program.
class World {
 public:
  World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World();

  // The program.

  /// Starts the program through its entry, up to the first turn of its loop and what that brings.
  void launch(const std::vector<std::string>& arguments = {});
  /// The user quits; files, settings, secrets and the service stay.
  void quit();
  /// The program ends without a chance to do anything.
  void kill();
  void restart();
  /// The running program's state.
  [[nodiscard]] AppDelegate& app() const;

  // The user and the day.

  /// There was a successful sign-in before: call it before `launch`.
  void signIn();
  /// Fills in and sends the sign-in panel that is on screen.
  void signInWithPanel();
  /// The service's participants from names of two words, with the ids "1", "2", ...
  void knows(const std::vector<std::string>& names) {
    service.backend.participants = participantsNamed(names);
  }
  /// The program runs, signed in and knowing these participants; what was before counts no more.
  void runsKnowing(const std::vector<std::string>& names);
  /// Time passes; everything due happens.
  void advance(double seconds) { loop.advance(seconds); }
  /// So many samples pass.
  void samples(int count) { advance(15.0 * count); }
  /// So many samples pass that see these titles of an application.
  void sees(const std::vector<std::string>& titles, int count = 1,
            const std::string& application = "Mail") {
    screen.show(application, titles);
    samples(count);
  }
  /// So many samples pass that see nobody.
  void looksElsewhere(int count) { sees({"Unrelated"}, count, "Editor"); }
  /// Requests, notifications and the trace so far count no more.
  void forgetThePast() {
    service.forgetRequests();
    notifier.shown.clear();
    trace.clear();
  }
  /// The panel or item on screen; a failure of the test when there is none.
  [[nodiscard]] FakeQuickNotePanel& widget() const { return existing(views.quickNote); }
  [[nodiscard]] FakeSignInPanel& signInPanel() const { return existing(views.signIn); }
  [[nodiscard]] FakeStatusItem& statusItem() const { return existing(views.statusItem); }

  // The local files.

  /// The path of a file in the support folder.
  [[nodiscard]] static std::string supportFile(const std::string& name);
  /// What it holds; empty when there is none.
  [[nodiscard]] std::string text(const std::string& name) const;
  [[nodiscard]] std::vector<std::string> watchLogLines() const;

  /// What the program did: files (see `FakeFiles`), "status item", "menu", "widget", "sign-in
  /// panel", "ask for trust", the timers "every 15 s" and "every 60 s", and notifications by their
  /// titles, "notify Captured — Lena O'Keefe".
  Trace trace;
  /// Those since the last call, with files of the support folder by their names alone.
  [[nodiscard]] Trace takeTrace();

  FakeClock clock;
  FakeMainLoop loop{clock, trace};
  FakeFiles files{"/home/ada", trace};
  FakeUserDefaults defaults;
  FakeSecretStore secrets{loop};
  FakeNotifier notifier{trace};
  FakeWorkspace workspace;
  FakeAccessibility accessibility{trace};
  FakeScreen screen;
  FakeUuidSource uuids;
  FakeViews views{trace};
  FakeService service{loop, clock};

 private:
  template <class View>
  static View& existing(View* view) {
    if (!view) throw std::logic_error("there is no such panel or item on screen");
    return *view;
  }
};

/// For suites that speak the world's language without naming it.
class WorldTest : public testing::Test, public World {};

}  // namespace notewick
