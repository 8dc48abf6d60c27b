#include "tests/app/simulated_day.h"

#include <gmock/gmock.h>

#include <cstdio>

#include "app/app_delegate.h"
#include "model/record_json.h"

namespace notewick {
namespace {

std::string lineFor(const ReceivedRequest& request) {
  constexpr std::string_view prefix = "/api/desktop/";
  std::string line = request.method + " " + request.path.substr(prefix.size());
  const auto authorization = request.header("Authorization").value_or("");
  if (!authorization.empty()) line += " as " + authorization.substr(7);
  const auto body = request.json();
  if (body.is_object() && body.contains("input")) line += ": " + body["input"].get<std::string>();
  return line;
}

}  // namespace

SimulatedDay::SimulatedDay() {
  clock.setLocal({2024, 5, 2, 8, 0, 0});
  knows({"Tobias Hargreave", "Lena O'Keefe", "Zoe Abel", "Samuel Ito", "Maria de la Cruz",
         "René Dupont", "Aisha Khan", "Jonas Weber", "Grace Okafor", "Li Wei", "Noor Haddad",
         "Peter Novak"});
}

void SimulatedDay::samplesSee(int count, const std::string& line) {
  for (int sample = 0; sample < count; ++sample) {
    samples(1);
    expectLogged(line);
  }
}

void SimulatedDay::nothingHappensUntil(int hour, int minute, int second) {
  screen.clear();
  advanceTo({2024, 5, 2, hour, minute, second});
}

void SimulatedDay::lateSamplesCome() {
  advance(0.9);
}

void SimulatedDay::expectSeen(const Pending& pending, const CivilTime& first,
                              const CivilTime& last) const {
  const Date lateness = pending.firstSeen - clock.dateOf(first);
  EXPECT_NEAR(lateness.count(), 0.5, 0.5) << "of the first sample";
  EXPECT_EQ(pending.lastSeen - pending.firstSeen, clock.dateOf(last) - clock.dateOf(first));
}

void SimulatedDay::writesNote(const std::string& participant, const std::string& text,
                              int minutes) {
  widget().chooseParticipant(participant);
  confirms(text, minutes);
}

void SimulatedDay::confirms(const std::string& text, int minutes) {
  widget().type(text);
  widget().pickMinutes(minutes);
  widget().pressSend();
  loop.runPosted();
}

void SimulatedDay::wasTold(const std::vector<Notification>& expected) {
  EXPECT_THAT(notifier.shown, testing::ElementsAreArray(expected));
  notifier.shown.clear();
}

void SimulatedDay::wasAsked(const std::vector<std::string>& expected) {
  std::vector<std::string> lines;
  for (const auto& request : service.requests) lines.push_back(lineFor(request));
  EXPECT_EQ(lines, expected);
  service.forgetRequests();
}

void SimulatedDay::expectLogged(const std::string& line) {
  watchLog_ += timeOfDay() + " " + line + "\n";
}

void SimulatedDay::expectWatchLog() const {
  const std::string log = text("watch.log");
  if (log == watchLog_) return;
  const auto lines = linesOf(log);
  const auto expected = linesOf(watchLog_);
  std::size_t place = 0;
  while (place < lines.size() && place < expected.size() && lines[place] == expected[place])
    ++place;
  ADD_FAILURE() << "the watch log differs in line " << place + 1 << " of " << lines.size() << ": "
                << (place < lines.size() ? lines[place] : "(missing)")
                << "\nexpected: " << (place < expected.size() ? expected[place] : "(nothing)");
}

void SimulatedDay::expectMenu(const std::vector<std::string>& expected) const {
  EXPECT_THAT(statusItem().lines(), testing::ElementsAreArray(expected));
}

std::vector<std::string> SimulatedDay::signedInMenu(const std::string& watching,
                                                    const std::vector<std::string>& middle) const {
  std::vector<std::string> lines = {"(Signed in as ada@velk.example)", watching, "-"};
  lines.insert(lines.end(), middle.begin(), middle.end());
  for (const auto* const line :
       {"-", "Log work now (call, visit…)", "Hide floating widget", "Open my case notes in VELK",
        "-", "Pause watching", "Reload participants", "Start at login", "Sign out of VELK", "-",
        "Quit VELK Notewick"})
    lines.emplace_back(line);
  return lines;
}

std::vector<Pending> SimulatedDay::storedPendings() const {
  return decodeRecords<Pending>(text("pending.json")).value();
}

std::vector<OutboxItem> SimulatedDay::storedNotes() const {
  return decodeRecords<OutboxItem>(text("outbox.json")).value();
}

std::string SimulatedDay::timeOfDay() const {
  const auto now = clock.localTime(clock.now());
  char stamp[32];
  std::snprintf(stamp, sizeof stamp, "%02d:%02d:%02d", now.hour, now.minute, now.second);
  return stamp;
}

Notification captured(const std::string& participant, int minutes) {
  return {"Captured — " + participant,
          "Parked in VELK (" + std::to_string(minutes) +
              " min). Write it up from your case-notes page when you're ready."};
}

Notification caught(const std::string& participant, int minutes) {
  return {"Log it? — " + participant, "Looks like you worked on " + participant + " (~" +
                                          std::to_string(minutes) +
                                          " min on screen). Confirm it in the floating widget."};
}

Notification general(const std::string& body) {
  return {"VELK Notewick", body};
}

}  // namespace notewick
