#include "tests/support/linux_session.h"

int main(int argc, char** argv) {
  return notewick::runTestsInSession(argc, argv, notewick::SessionBus::running);
}
