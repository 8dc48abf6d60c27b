#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/quick_note_panel.h"
#include "platform/sign_in_panel.h"
#include "tests/support/trace.h"

namespace notewick {

class FakeStatusItem;
class FakeQuickNotePanel;
class FakeSignInPanel;

/// What a test sees of the views, and what it tells them.
struct ViewsOnScreen {
  Trace& trace;

  // The newest view of its kind; null when it does not exist (any longer).
  FakeStatusItem* statusItem = nullptr;
  FakeQuickNotePanel* quickNote = nullptr;
  FakeSignInPanel* signIn = nullptr;

  bool hasTray = true;      ///< the desktop shows status items
  bool frameSaved = false;  ///< the quick-note panel was moved by the user once, in any run
};

/// What the fake panels share: whether they are on screen, and the rule that a panel must not be
/// destroyed inside a call to its delegate.
template <class Port, class Delegate>
class FakePanel : public Port {
 public:
  FakePanel(ViewsOnScreen& views, std::weak_ptr<Delegate> owner)
      : views_(views), delegate_(std::move(owner)) {}
  FakePanel(const FakePanel&) = delete;
  FakePanel& operator=(const FakePanel&) = delete;
  ~FakePanel() override {
    EXPECT_FALSE(*callingDelegate_) << "a panel was destroyed inside a call to its delegate";
  }

  void orderFrontRegardless() override { visible = true; }
  void makeKeyAndOrderFront() override { visible = key = true; }
  void orderOut() override { visible = key = false; }

  /// The user closes the panel.
  void close() {
    EXPECT_TRUE(visible) << "the user cannot close a panel that is not on screen";
    const bool exists = callDelegate([](Delegate& owner) { owner.windowWillClose(); });
    if (exists) visible = key = false;
  }

  bool visible = false;
  bool key = false;  ///< has the keyboard

 protected:
  /// Calls the delegate; false when the panel is gone afterwards.
  bool callDelegate(const std::function<void(Delegate&)>& call) {
    const auto calling = callingDelegate_;
    const std::weak_ptr<bool> alive = alive_;
    *calling = true;
    if (const auto owner = delegate_.lock()) call(*owner);
    *calling = false;
    return !alive.expired();
  }

  ViewsOnScreen& views_;

 private:
  std::weak_ptr<Delegate> delegate_;
  std::shared_ptr<bool> callingDelegate_ = std::make_shared<bool>(false);
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

/// The sign-in panel as the user sees it and works it.
class FakeSignInPanel : public FakePanel<SignInPanel, SignInPanelDelegate> {
 public:
  FakeSignInPanel(ViewsOnScreen& views, SignInTexts fixedTexts,
                  std::weak_ptr<SignInPanelDelegate> owner)
      : FakePanel(views, std::move(owner)), texts(std::move(fixedTexts)) {
    views_.signIn = this;
    views_.trace.push_back("sign-in panel");
  }
  ~FakeSignInPanel() override {
    if (views_.signIn == this) views_.signIn = nullptr;
  }

  void present() override {
    makeKeyAndOrderFront();
    ++presented;
  }
  void presentQuietly() override { orderFrontRegardless(); }
  [[nodiscard]] std::string email() const override { return typedEmail; }
  [[nodiscard]] std::string password() const override { return typedPassword; }
  void setError(const std::string& text) override { error = text; }
  void setBusy(bool isBusy) override { busy = isBusy; }

  // What the user does.
  void type(const std::string& newEmail, const std::string& newPassword) {
    typedEmail = newEmail;
    typedPassword = newPassword;
  }
  /// Presses the button, or Return in a field; nothing while the button is disabled.
  void pressSignIn() {
    if (!busy) callDelegate([](auto& receiver) { receiver.signIn(); });
  }

  SignInTexts texts;
  std::string typedEmail;
  std::string typedPassword;
  std::string error;
  bool busy = false;
  int presented = 0;
};

/// The quick-note panel as the user sees it and works it.
class FakeQuickNotePanel : public FakePanel<QuickNotePanel, QuickNotePanelDelegate> {
 public:
  FakeQuickNotePanel(ViewsOnScreen& views, QuickNoteTexts fixedTexts,
                     std::weak_ptr<QuickNotePanelDelegate> owner)
      : FakePanel(views, std::move(owner)), texts(std::move(fixedTexts)) {
    views_.quickNote = this;
  }
  ~FakeQuickNotePanel() override {
    if (views_.quickNote == this) views_.quickNote = nullptr;
  }

  void setParticipants(const std::vector<std::string>& titles,
                       std::optional<std::size_t> selected) override {
    EXPECT_EQ(selected.has_value(), !titles.empty());
    EXPECT_TRUE(!selected || *selected < titles.size());
    participants = titles;
    selection = selected;
  }
  [[nodiscard]] std::optional<std::string> selectedParticipant() const override {
    return selection ? std::optional(participants.at(*selection)) : std::nullopt;
  }
  [[nodiscard]] std::string noteText() const override { return note; }
  void setNoteText(const std::string& text) override { note = text; }
  void focusNote() override { noteFocused = true; }
  void setPlaceholderHidden(bool hidden) override { placeholderHidden = hidden; }
  [[nodiscard]] std::optional<std::size_t> selectedMinutes() const override { return minutes; }
  void deselectMinutes() override { minutes.reset(); }
  void setHint(const std::string& text) override { hint = text; }
  void setStatus(const std::string& text) override { status = text; }
  void setCaught(const std::vector<CaughtRow>& newRows,
                 const std::optional<std::string>& newMore) override {
    rows = newRows;
    more = newMore;
    views_.trace.push_back("widget");
  }
  void fitToContents() override { ++fits; }
  bool applySavedFrame() override {
    if (views_.frameSaved) place = "saved";
    return views_.frameSaved;
  }
  void placeAtBottomRight(double inset) override {
    place = "bottom right, " + std::to_string(std::lround(inset)) + " from the edges";
  }

  // What the user does.
  void type(const std::string& text) {
    note = text;
    callDelegate([](auto& receiver) { receiver.textDidChange(); });
  }
  void chooseParticipant(const std::string& title) { selection = indexOf(title, participants); }
  void pickMinutes(int segment) { minutes = indexOf(std::to_string(segment), texts.minutes); }
  void pressSend() {
    callDelegate([](auto& receiver) { receiver.send(); });
  }
  void clickLog(std::size_t row) {
    callDelegate([row](auto& receiver) { receiver.caughtLog(row); });
  }
  void clickSkip(std::size_t row) {
    callDelegate([row](auto& receiver) { receiver.caughtSkip(row); });
  }

  /// The texts of the rows.
  [[nodiscard]] std::vector<std::string> rowTexts() const {
    std::vector<std::string> all;
    for (const auto& row : rows) all.push_back(row.text);
    return all;
  }

  QuickNoteTexts texts;
  std::vector<std::string> participants;
  std::optional<std::size_t> selection;
  std::string note;
  std::optional<std::size_t> minutes;
  std::string hint;
  std::string status;
  std::vector<CaughtRow> rows;
  std::optional<std::string> more;
  bool placeholderHidden = false;
  bool noteFocused = false;
  int fits = 0;
  std::string place;  ///< where it was put last

 private:
  static std::size_t indexOf(const std::string& title, const std::vector<std::string>& titles) {
    const auto found = std::ranges::find(titles, title);
    if (found == titles.end()) throw std::logic_error("there is no \"" + title + "\" to choose");
    return std::size_t(found - titles.begin());
  }
};

}  // namespace notewick
