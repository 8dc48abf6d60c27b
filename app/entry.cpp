#include "app/entry.h"

#include <iostream>

#include "app/app_delegate.h"
#include "app/constants.h"
#include "app/self_test.h"
#include "client/velk_client.h"
#include "platform/composition.h"
#include "ui/login_controller.h"

namespace notewick {

Application* app = nullptr;
std::shared_ptr<AppDelegate> delegate;

int start(const std::vector<std::string>& arguments) {
  setConstants(ports().files.homeFolder());
  if (wantsSelfTest(arguments)) {
    runSelfTest(std::cout);
    return std::cout.flush() ? 0 : 1;
  }
  app = &sharedApplication();
  app->becomeAccessory();
  delegate = std::make_shared<AppDelegate>();
  return app->run(delegate);
}

void releaseProgram() {
  LoginController::current().reset();
  delegate.reset();
  VELKClient::releaseShared();
  app = nullptr;
}

}  // namespace notewick
