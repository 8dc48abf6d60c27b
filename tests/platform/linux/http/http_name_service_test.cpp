// A name service that does not answer. This program's own getaddrinfo stands before the C
// library's.
#include <dlfcn.h>
#include <netdb.h>

#include <QElapsedTimer>
#include <mutex>
#include <string_view>

#include "tests/support/http_session_fixture.h"

namespace {

std::timed_mutex slowName;
std::atomic<int> waiting = 0;

}  // namespace

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** found) {
  static const auto real =
      reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
  if (name == nullptr || std::string_view(name) != "slow.test") {
    return real(name, service, hints, found);
  }
  ++waiting;
  const std::lock_guard wait(slowName);
  --waiting;
  return EAI_AGAIN;
}

namespace notewick {
namespace {

using namespace std::chrono_literals;

TEST_F(CurlHttpSessionTest, ANameServiceThatHangsHoldsNothingUp) {
  slowName.lock();
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(outcome(get("http://slow.test/", 0.2)), "The request timed out.");
  send(get("http://slow.test/"));
  EXPECT_TRUE(waitUntil([] { return waiting == 2; }));
  session_.reset();
  EXPECT_LT(time.elapsed(), 30'000) << "neither the time-out nor the end waits for the name";
  slowName.unlock();
  EXPECT_TRUE(waitUntil([] { return waiting == 0; }));
}

TEST_F(CurlHttpSessionTest, AnUnknownNameIsATransportError) {
  EXPECT_EQ(outcome(get("http://slow.test/")), "The server could not be found.");
}

}  // namespace
}  // namespace notewick
