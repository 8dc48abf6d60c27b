#include "tests/support/fake_application.h"

#include "platform/composition.h"

namespace notewick {

int FakeApplication::run(std::weak_ptr<ApplicationDelegate> owner) {
  ++runs;
  delegate_ = std::move(owner);
  if (const auto delegate = delegate_.lock()) delegate->applicationDidFinishLaunching();
  return 0;
}

void FakeApplication::startAgain() {
  if (const auto delegate = delegate_.lock()) delegate->applicationReopened();
}

void FakeApplication::terminate() {
  if (const auto delegate = delegate_.lock()) delegate->applicationWillTerminate();
}

FakeApplication& fakeApplication() {
  static FakeApplication application;
  return application;
}

Application& sharedApplication() {
  fakeApplication().onRequest();
  return fakeApplication();
}

}  // namespace notewick
