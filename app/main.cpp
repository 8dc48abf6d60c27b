#include "app/entry.h"
#include "platform/composition.h"

int main(int argc, char** argv) {
  notewick::makePlatform(argc, argv);
  return notewick::start({argv + 1, argv + argc});
}
