// A service may answer with any bytes; they are read as a whole tree of them would be.
#include <cstdlib>

#include "client/failure_text.h"
#include "tests/client/plain_answer.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const notewick::AnswerBody body = notewick::readAnswer(text);
  if (body != notewick::plainlyRead(text)) std::abort();
  (void)notewick::blamesCredentials(body);
  (void)notewick::failureText(body, "", 0);
  return 0;
}
