#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/accessibility.h"
#include "platform/notifier.h"
#include "platform/screen.h"
#include "platform/uuid_source.h"
#include "platform/workspace.h"
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

/// What the user looks at, as a test arranges it.
class FakeScreen : public Screen {
 public:
  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override {
    ++applicationReads;
    whileReading();
    auto read = application_;
    if (read && read->titles.size() > mostWindows) read->titles.resize(mostWindows);
    return read;
  }

  /// An application with these windows comes to the front; the first has the focus.
  void show(const std::string& name, const std::vector<std::string>& titles) {
    FrontmostApplication shown{name, std::nullopt, {titles.begin(), titles.end()}};
    if (!titles.empty()) shown.focusedTitle = titles.front();
    show(std::move(shown));
  }
  void show(FrontmostApplication application) { application_ = std::move(application); }
  /// Nothing is frontmost.
  void clear() { application_.reset(); }

  std::function<void()> whileReading = [] {};  ///< what happens in the meantime
  std::size_t applicationReads = 0;  ///< how often the frontmost application was asked for

 private:
  std::optional<FrontmostApplication> application_;
};

/// The desktop around the program: opens nothing, counts its beeps.
class FakeWorkspace : public Workspace {
 public:
  void openUrl(const std::string& url) override { openedUrls.push_back(url); }
  void beep() override { ++beeps; }
  [[nodiscard]] std::string bundlePath() const override { return bundle; }
  [[nodiscard]] LoginItemForm loginItemForm() const override { return form; }
  [[nodiscard]] std::string configurationFolder() const override { return configuration; }

  std::vector<std::string> openedUrls;
  int beeps = 0;
  std::string bundle = "/Applications/VELK Notewick.app";
  LoginItemForm form = LoginItemForm::launchAgent;
  std::string configuration = "/home/ada/.config";
};

struct Notification {
  std::string title;
  std::string body;

  bool operator==(const Notification&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const Notification& notification) {
    return out << notification.title << " / " << notification.body;
  }
};

/// The notification of a note that arrived.
inline Notification captured(const std::string& participant, int minutes) {
  return {"Captured — " + participant,
          "Parked in VELK (" + std::to_string(minutes) +
              " min). Write it up from your case-notes page when you're ready."};
}
/// The notification of caught work.
inline Notification caught(const std::string& participant, int minutes) {
  return {"Log it? — " + participant, "Looks like you worked on " + participant + " (~" +
                                          std::to_string(minutes) +
                                          " min on screen). Confirm it in the floating widget."};
}
/// A general notification.
inline Notification general(const std::string& body) {
  return {"VELK Notewick", body};
}

/// Keeps what was shown, in order, on the screen for ever.
class FakeNotifier : public Notifier {
 public:
  explicit FakeNotifier(Trace& trace) : trace_(trace) {}

  void show(const std::string& title, const std::string& body,
            std::function<void()> clicked) override {
    shown.push_back({title, body});
    clicked_.emplace_back(title, std::move(clicked));
    trace_.push_back("notify " + title);
  }

  /// The user clicks the latest with this title.
  void click(const std::string& title) {
    const auto found = std::find_if(clicked_.rbegin(), clicked_.rend(),
                                    [&](const auto& each) { return each.first == title; });
    if (found == clicked_.rend())
      ADD_FAILURE() << "there is no notification \"" << title << "\" to click";
    else
      found->second();
  }

  std::vector<Notification> shown;

 private:
  std::vector<std::pair<std::string, std::function<void()>>> clicked_;
  Trace& trace_;
};

/// UUIDs that count: 00000000-0000-4000-8000-000000000001, then ...2.
class FakeUuidSource : public UuidSource {
 public:
  [[nodiscard]] std::string next() override { return nth(++count_); }

  /// The id that the `number`th call gives, counted from 1.
  [[nodiscard]] static std::string nth(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    return "00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits;
  }

 private:
  std::uint64_t count_ = 0;
};

}  // namespace notewick
