#include "platform/linux/http/desktop_proxies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <semaphore>

#include "tests/support/linux_session.h"

namespace notewick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

class DesktopProxiesTest : public testing::Test {
 protected:
  ~DesktopProxiesTest() override { QThreadPool::globalInstance()->waitForDone(); }

  /// The desktop, which answers with the origin it was asked for.
  QList<QNetworkProxy> answer(const QNetworkProxyQuery& query) {
    answeredElsewhere_ = QThread::currentThread() != main_;
    ++asked_;
    if (hangs_) goOn_.acquire();
    return {QNetworkProxy(QNetworkProxy::HttpProxy, query.url().toString())};
  }

  void find(DesktopProxies& proxies, const char* url) {
    proxies.find(QUrl(url), [this](const QList<QNetworkProxy>& found) {
      told_.push_back(found.first().hostName().toStdString());
    });
  }

  QThread* const main_ = QThread::currentThread();
  std::atomic<bool> answeredElsewhere_ = false;
  std::atomic<int> asked_ = 0;
  std::atomic<bool> hangs_ = false;
  std::binary_semaphore goOn_{0};
  std::vector<std::string> told_;
  std::unique_ptr<DesktopProxies> proxies_ = std::make_unique<DesktopProxies>(
      [this](const QNetworkProxyQuery& query) { return answer(query); });
};

TEST_F(DesktopProxiesTest, AnotherThreadAsksForTheOrigin) {
  find(*proxies_, "https://velk.example:8443/api?q=secret#x");
  EXPECT_THAT(told_, ElementsAre());
  EXPECT_TRUE(waitUntil([this] { return !told_.empty(); }));
  EXPECT_THAT(told_, ElementsAre("https://velk.example:8443"));
  EXPECT_TRUE(answeredElsewhere_);
}

TEST_F(DesktopProxiesTest, ManyRequestsAskOnceForEachOrigin) {
  for (int count = 0; count < 10; ++count) find(*proxies_, "https://velk.example/a");
  EXPECT_TRUE(waitUntil([this] { return told_.size() == 10; }));
  EXPECT_THAT(told_, Each("https://velk.example"));
  find(*proxies_, "https://velk.example/b");
  EXPECT_THAT(told_, SizeIs(11)) << "known for a minute";
  EXPECT_EQ(asked_, 1);
  find(*proxies_, "https://other.example/");
  EXPECT_TRUE(waitUntil([this] { return told_.size() == 12; }));
  EXPECT_EQ(asked_, 2);
}

TEST_F(DesktopProxiesTest, ADesktopThatDoesNotAnswerHoldsNothingUpAndMayAnswerTooLate) {
  hangs_ = true;
  for (const bool isTooLate : {false, true}) {
    find(*proxies_, isTooLate ? "https://other.example/" : "https://velk.example/");
    EXPECT_TRUE(waitUntil([&] { return asked_ == (isTooLate ? 2 : 1); }));
    if (isTooLate) proxies_.reset();
    goOn_.release();
    QThreadPool::globalInstance()->waitForDone();
    catchUp();
    EXPECT_THAT(told_, ElementsAre("https://velk.example"));
  }
}

}  // namespace
}  // namespace notewick
