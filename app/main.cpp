#include "app/entry.h"
#include "platform/composition.h"

int main(int argc, char** argv) {
  const auto platform = notewick::makePlatform(argv);
  const int status = notewick::start({argv + 1, argv + argc});
  notewick::releaseProgram();
  return status;
}
