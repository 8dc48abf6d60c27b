// Shows the views with sample contents, and prints what the user does with them, one line each.
// Usage: show-views [--quick] [--key] [--tray] [--notes N]
// Lines on standard input are commands; see obey.

#include <QApplication>
#include <QCommandLineParser>
#include <QSocketNotifier>
#include <iostream>
#include <memory>
#include <sstream>

#include "platform/linux/user_defaults.h"
#include "platform/linux/views.h"

namespace notewick {
namespace {

void say(const std::string& line) {
  std::cout << line << std::endl;
}

struct Printer : StatusItemTarget, QuickNotePanelDelegate {
  void menuItemChosen(const MenuItem& item) override { say("chosen " + item.title); }
  void statusItemClicked() override {}
  void send() override {
    const auto minutes = quick->selectedMinutes();
    say("send " + quick->selectedParticipant().value_or("nobody") + " | " + quick->noteText() +
        " | " + (minutes ? std::to_string(*minutes) : "none"));
  }
  void caughtLog(std::size_t /*tag*/) override {}
  void caughtSkip(std::size_t /*tag*/) override {}
  void textDidChange() override { quick->setPlaceholderHidden(!quick->noteText().empty()); }
  void windowWillClose() override { say("closed"); }

  std::unique_ptr<StatusItem> statusItem;
  std::unique_ptr<QuickNotePanel> quick;
};

const QuickNoteTexts QUICK_NOTE = {"VELK — quick note",
                                   "Participant",
                                   "What did you do?",
                                   "What did you do? One line is enough.",
                                   "Minutes",
                                   {"15", "30", "45", "60", "90", "120"},
                                   "Send to VELK",
                                   "Caught — confirm or skip",
                                   "Log",
                                   "✕"};

MenuItem item(const std::string& title, std::optional<MenuAction> action,
              const std::string& key = "") {
  return {title, action, key, std::nullopt, false};
}

MenuItem line() {
  return {"", std::nullopt, "", std::nullopt, true};
}

Menu sampleMenu(int notes) {
  Menu menu = {item("Signed in as anna_b@example.org", std::nullopt),
               item("Log: Snow & Sons & Daughters (~7 min, 2024-05-02)", MenuAction::openPending),
               line(),
               item(std::to_string(notes) + " notes waiting to send to VELK", std::nullopt),
               item("Retry now", MenuAction::retryOutbox),
               line(),
               item("Log work now (call, visit…)", MenuAction::logNow, "l"),
               item("Quit VELK Notewick", MenuAction::terminate, "q")};
  if (notes == 0) menu.erase(menu.begin() + 2, menu.begin() + 5);
  return menu;
}

/// The menu and the title while so many notes wait.
void showNotes(StatusItem& item, int notes) {
  item.setMenu(sampleMenu(notes));
  item.setTitle(notes == 0 ? " VELK" : " VELK (" + std::to_string(notes) + ")",
                static_cast<std::size_t>(notes));
}

void showRows(QuickNotePanel& panel, int count) {
  std::vector<CaughtRow> rows;
  for (int row = 0; row < count; ++row) {
    const std::string text = "Participant " + std::to_string(row) + " · ~12m · 2024-05-02";
    rows.push_back({text, "Log " + text, "Skip " + text});
  }
  panel.setCaught(rows, std::nullopt);
  panel.fitToContents();
}

void showQuickNote(Printer& printer, QtViews& views, const QCommandLineParser& options,
                   std::weak_ptr<QuickNotePanelDelegate> delegate) {
  printer.quick = views.makeQuickNotePanel(QUICK_NOTE, std::move(delegate));
  QuickNotePanel& panel = *printer.quick;
  panel.setHint("Minutes — you set this.");
  panel.setParticipants({"Alice Jones", "Bob Smith", "Lena O'Keefe"}, 0);
  showRows(panel, 0);
  if (!panel.applySavedFrame()) panel.placeAtBottomRight(24);
  options.isSet("key") ? panel.makeKeyAndOrderFront() : panel.orderFrontRegardless();
}

void showTray(Printer& printer, QtViews& views, const QCommandLineParser& options,
              std::weak_ptr<StatusItemTarget> target) {
  printer.statusItem =
      views.makeStatusItem({"note.text.badge.plus", "VELK Notewick", " VELK"}, std::move(target));
  showNotes(*printer.statusItem, options.value("notes").toInt());
}

/// Carries out a line of standard input, a command and its text: what the program does later on.
void obey(const std::string& line, Printer& printer) {
  const auto end = line.find(' ');
  const std::string command = line.substr(0, end);
  const std::string text = end == std::string::npos ? "" : line.substr(end + 1);
  if (command == "hide") printer.quick->orderOut();
  if (command == "show") printer.quick->orderFrontRegardless();
  if (command == "key") printer.quick->makeKeyAndOrderFront();
  if (command == "rows") showRows(*printer.quick, std::stoi(text));
  if (command == "status") printer.quick->setStatus(text);
  if (command == "menu") printer.statusItem->setMenu({item(text, MenuAction::logNow)});
  if (command == "notes") {  // several numbers: in one turn of the main loop
    std::istringstream numbers(text);
    for (int notes = 0; numbers >> notes;) showNotes(*printer.statusItem, notes);
  }
  if (command == "quit") QCoreApplication::quit();
  say("done " + line);
}

int show(int argc, char** argv) {
  QCommandLineParser options;
  options.addOptions({{"quick", ""}, {"key", ""}, {"tray", ""}, {"notes", "", "n"}});
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  if (!options.parse(arguments)) return 2;

  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);

  SettingsUserDefaults userDefaults;
  QtViews views(userDefaults);
  const auto printer = std::make_shared<Printer>();
  if (options.isSet("tray")) showTray(*printer, views, options, printer);
  if (options.isSet("quick")) showQuickNote(*printer, views, options, printer);

  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
    std::string command;
    if (!std::getline(std::cin, command)) return input.setEnabled(false);
    obey(command, *printer);
  });
  const int status = QApplication::exec();
  say("ended");
  return status;
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  return notewick::show(argc, argv);
}
