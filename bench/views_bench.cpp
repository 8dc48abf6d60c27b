// What the user's own doing costs in the front end: the world of the tests with the real menu and
// widget, in a desktop session.
//   views_bench typing LENGTH none|blanks ROUNDS   one line a round: the milliseconds from a key in
//   a
//                                                  note of so many characters to what it paints
//   views_bench menu PENDINGS ROUNDS               ... from a change of one pending item to the
//   drawn menu

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "app/app_delegate.h"
#include "platform/linux/user_defaults.h"
#include "platform/linux/views.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

constexpr int CHANGES_A_ROUND = 15;
constexpr int QUIET = 100;  // milliseconds that other programs get to react

/// The world of the tests, but for the views, which are the real ones.
class RealViewsWorld : public World {
 public:
  RealViewsWorld() {
    registerPorts({clock, loop, files, defaults, secrets, notifier, workspace, accessibility,
                   screen, uuids, realViews, [this](const HttpSessionConfiguration& settings) {
                     return service.makeSession(settings);
                   }});
    signIn();
    knows({"Lena O'Keefe", "Tobias Hargreave"});
    launch();
  }

  QtViews realViews{defaults};
};

/// Lets everything happen that is under way.
void settle() {
  QElapsedTimer timer;
  for (timer.start(); timer.elapsed() < QUIET;) QApplication::processEvents();
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

/// Sees when a widget has been painted.
class PaintWitness : public QObject {
 public:
  explicit PaintWitness(QWidget& watched) { watched.installEventFilter(this); }

  void wait() {
    while (!painted_) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    painted_ = false;
  }
  void forget() { painted_ = false; }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }

 private:
  bool painted_ = false;
};

QPlainTextEdit& noteField() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (auto* const note = window->findChild<QPlainTextEdit*>()) return *note;
  }
  qFatal("there is no note field");
}

void type(QWidget& field) {
  for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent key(kind, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(&field, &key);
  }
}

void measureTyping(qsizetype length, bool withBlanks, int rounds) {
  const RealViewsWorld world;
  QPlainTextEdit& note = noteField();
  note.setPlainText(
      QString(withBlanks ? "words of a note " : "wordsofanote").repeated(length).left(length));
  note.moveCursor(QTextCursor::End);
  settle();
  PaintWitness witness(*note.viewport());
  for (; rounds > 0; --rounds) {
    std::vector<double> milliseconds;
    for (int key = 0; key < CHANGES_A_ROUND; ++key) {
      witness.forget();
      QElapsedTimer timer;
      timer.start();
      type(note);
      witness.wait();
      milliseconds.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::printf("%.4f\n", median(milliseconds));
  }
}

Pending pendingOf(std::size_t number) {
  const auto minutes = static_cast<std::int64_t>(number);
  return {std::to_string(number), "Lena O'Keefe", "2026-03-02", {}, {}, minutes, {}};
}

/// Puts one more into the middle, or takes it out again: the icon shows "9+" for both numbers.
void changeMiddle(std::vector<Pending>& pendings, std::size_t count) {
  const auto middle = pendings.begin() + static_cast<std::ptrdiff_t>(count / 2);
  if (pendings.size() == count) {
    pendings.insert(middle, pendingOf(count));
  } else {
    pendings.erase(middle);
  }
}

void measureMenu(std::size_t count, int rounds) {
  const RealViewsWorld world;
  AppDelegate& app = world.app();
  for (std::size_t number = 0; number < count; ++number) app.pendings.push_back(pendingOf(number));
  app.rebuildMenu();
  settle();
  for (; rounds > 0; --rounds) {
    std::vector<double> milliseconds;
    for (int change = 0; change < CHANGES_A_ROUND; ++change) {
      changeMiddle(app.pendings, count);
      QElapsedTimer timer;
      timer.start();
      app.rebuildMenu();
      QApplication::processEvents();
      milliseconds.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
      settle();
    }
    std::printf("%.4f\n", median(milliseconds));
  }
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 3) return EXIT_FAILURE;
  const int rounds = std::stoi(arguments.back());
  if (arguments[0] == "typing") {
    notewick::measureTyping(std::stol(arguments[1]), arguments[2] == "blanks", rounds);
  } else {
    notewick::measureMenu(std::stoul(arguments[1]), rounds);
  }
}
