#include "tests/app/simulated_day.h"

#include <utility>

#include "detect/stamps.h"
#include "model/record_json.h"

namespace notewick {

using testing::ElementsAreArray;
using testing::IsEmpty;

SimulatedDay::SimulatedDay() {
  knows({"Tobias Hargreave", "Lena O'Keefe", "Zoe Abel", "Samuel Ito", "Maria de la Cruz",
         "René Dupont", "Aisha Khan", "Jonas Weber", "Grace Okafor", "Li Wei", "Noor Haddad",
         "Peter Novak"});
}

void SimulatedDay::runsSince(int hour, int minute) {
  clock.setLocal({2024, 5, 2, hour, minute, 0});
  clock.set(clock.now() - Date(15));
  signIn();
  launch();
  samples(1);
  forgetThePast();
}

void SimulatedDay::TearDown() {
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_THAT(asked(), IsEmpty());
  EXPECT_THAT(watchLogLines(), ElementsAreArray(watchLog_));
}

void SimulatedDay::samplesSee(int count, const std::string& line) {
  for (int sample = 0; sample < count; ++sample) {
    samples(1);
    expectLogged(line);
  }
}

void SimulatedDay::reads(const std::string& participant, int count) {
  screen.show("Mail", {participant});
  samplesSee(count, "app=Mail titles=[\"" + participant + "\"] matches=[\"" + participant + "\"]");
}

void SimulatedDay::seesNothing(int count) {
  screen.clear();
  samples(count);
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

void SimulatedDay::chooses(const std::string& item) {
  statusItem().choose(item);
  loop.runPosted();
}

std::vector<Notification> SimulatedDay::shown() {
  return std::exchange(notifier.shown, {});
}

std::vector<std::string> SimulatedDay::asked() {
  constexpr std::string_view prefix = "/api/desktop/";
  std::vector<std::string> lines;
  for (const auto& request : service.requests) {
    lines.push_back(request.method + " " + request.path.substr(prefix.size()));
    const auto body = request.json();
    if (body.contains("input")) lines.back() += ": " + body["input"].get<std::string>();
  }
  service.forgetRequests();
  return lines;
}

void SimulatedDay::expectLogged(const std::string& line) {
  watchLog_.push_back(secondStamp() + " " + line);
}

std::vector<Pending> SimulatedDay::storedPendings() const {
  return decodeRecords<Pending>(text("pending.json")).value();
}

std::vector<OutboxItem> SimulatedDay::storedNotes() const {
  return decodeRecords<OutboxItem>(text("outbox.json")).value();
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
