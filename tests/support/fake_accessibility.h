#pragma once

#include <deque>

#include "platform/accessibility.h"
#include "tests/support/trace.h"

namespace notewick {

/// Trust that a test gives and takes, and how often it was asked for.
class FakeAccessibility : public Accessibility {
 public:
  explicit FakeAccessibility(Trace& trace) : trace_(trace) {}

  bool isTrusted() override {
    ++queries;
    if (!nextAnswers.empty()) {
      trusted = nextAnswers.front();
      nextAnswers.pop_front();
    }
    return trusted;
  }
  bool isTrustedWithPrompt() override {
    if (!trusted) ++prompts;
    ++promptingQueries;
    trace_.push_back("ask for trust");
    return trusted;
  }
  [[nodiscard]] TrustRemedy remedy() const override { return trustRemedy; }

  bool trusted = true;
  TrustRemedy trustRemedy = TrustRemedy::settingsPage;
  int queries = 0;
  int promptingQueries = 0;      ///< queries that may ask the user
  int prompts = 0;               ///< questions the user saw
  std::deque<bool> nextAnswers;  ///< what the next queries find, before `trusted` stays

 private:
  Trace& trace_;
};

}  // namespace notewick
