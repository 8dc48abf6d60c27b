#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/secret_store.h"
#include "tests/support/linux_session.h"

namespace notewick {

inline const SecretKey token{"tools.velk.notewick", "refresh-token"};

/// How an outcome reads in a test: "found secret", "absent", "locked".
inline std::string told(const SecretLookup& lookup) {
  switch (lookup.state) {
    case SecretState::found:
      return "found " + lookup.secret;
    case SecretState::absent:
      return "absent" + lookup.secret;
    case SecretState::locked:
      return "locked" + lookup.secret;
  }
  return "";
}

/// A store, and the secret service that a test has started.
class SecretStoreTest : public testing::Test {
 protected:
  [[nodiscard]] std::string loaded() { return told(store_.load(token)); }

  void startAndWait(const std::vector<std::string>& command, const std::string& input = "") {
    service_ = std::make_unique<ChildProcess>(command, input);
    ASSERT_TRUE(waitForOwner(secretService::name));
  }

  ~SecretStoreTest() override {
    service_.reset();
    EXPECT_TRUE(waitForOwner(secretService::name, false));
  }

  std::unique_ptr<ChildProcess> service_;
  SecretServiceStore store_;
};

}  // namespace notewick
