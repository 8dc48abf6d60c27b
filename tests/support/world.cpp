#include "tests/support/world.h"

#include <sstream>
#include <utility>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "app/entry.h"
#include "platform/composition.h"

namespace notewick {
FakeApplication& fakeApplication() {
  static FakeApplication application;
  return application;
}

Application& sharedApplication() {
  fakeApplication().onRequest();
  return fakeApplication();
}

World::World() {
  loop.fireLate(0.4);
  clock.setZone(2);
  clock.setLocal({2024, 5, 2, 9, 0, 0});
  registerPorts({clock, loop, files, defaults, secrets, notifier, workspace, accessibility, screen,
                 uuids, views, [this](const HttpSessionConfiguration& settings) {
                   return service.makeSession(settings);
                 }});
  setConstants(files.homeFolder());
}

World::~World() {
  quit();
}

void World::launch(const std::vector<std::string>& arguments) {
  EXPECT_EQ(start(arguments), 0);
  loop.runPosted();
}

void World::quit() {
  fakeApplication().terminate();
  kill();
}

void World::kill() {
  loop.dropPosted();
  releaseProgram();
}

void World::restart() {
  quit();
  launch();
}

AppDelegate& World::app() const {
  if (!delegate) throw std::logic_error("the program does not run");
  return *delegate;
}

void World::signIn() {
  secrets.setRefreshToken(service.backend.issueRefreshToken());
  defaults.setString("VELKUserEmail", service.backend.email);
}

void World::signInWithPanel() {
  signInPanel().type(service.backend.email, service.backend.password);
  signInPanel().pressSignIn();
  loop.runPosted();
}

void World::runsKnowing(const std::vector<std::string>& names) {
  signIn();
  knows(names);
  launch();
  forgetThePast();
}

std::string World::supportFile(const std::string& name) {
  return SUPPORT_DIR + "/" + name;
}

Trace World::takeTrace() {
  Trace taken = std::exchange(trace, {});
  for (auto& line : taken)
    if (const auto folder = line.find(SUPPORT_DIR + "/"); folder != std::string::npos)
      line.erase(folder, SUPPORT_DIR.size() + 1);
  return taken;
}

std::string World::text(const std::string& name) const {
  return files.contents(supportFile(name)).value_or("");
}

std::vector<std::string> World::watchLogLines() const {
  return linesOf(text("watch.log"));
}

std::vector<Participant> participantsNamed(const std::vector<std::string>& names) {
  std::vector<Participant> all;
  for (const auto& name : names) {
    const auto blank = name.find(' ');
    all.push_back({std::to_string(all.size() + 1), name.substr(0, blank), name.substr(blank + 1)});
  }
  return all;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace notewick
