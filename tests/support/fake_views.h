#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/views.h"
#include "tests/support/fake_panels.h"

namespace notewick {

/// The item in the status bar as the user sees it and works it.
class FakeStatusItem : public StatusItem {
 public:
  FakeStatusItem(ViewsOnScreen& views, StatusItemAppearance look,
                 std::weak_ptr<StatusItemTarget> target)
      : appearance(std::move(look)),
        title(appearance.title),
        views_(views),
        target_(std::move(target)) {
    views_.statusItem = this;
    views_.trace.push_back("status item");
  }
  FakeStatusItem(const FakeStatusItem&) = delete;
  FakeStatusItem& operator=(const FakeStatusItem&) = delete;
  ~FakeStatusItem() override {
    if (views_.statusItem == this) views_.statusItem = nullptr;
  }

  void setTitle(const std::string& text, std::size_t number) override {
    title = text;
    count = number;
  }
  void setMenu(const Menu& newMenu) override {
    menu = newMenu;
    ++menusSet;
    views_.trace.push_back("menu");
  }
  [[nodiscard]] bool isShown() const override { return views_.hasTray; }

  /// The user chooses the enabled item with this title; a test failure when there is none.
  void choose(const std::string& itemTitle) {
    const auto* const item = find(itemTitle);
    if (item && item->enabled())
      choose(MenuItem(*item));
    else
      ADD_FAILURE() << "no enabled menu item \"" << itemTitle << "\"";
  }
  /// The user chooses an item, perhaps from a menu that has been replaced.
  void choose(const MenuItem& item) {
    if (const auto target = target_.lock()) target->menuItemChosen(item);
  }
  void click() {
    if (const auto target = target_.lock()) target->statusItemClicked();
  }

  /// The menu's lines from top to bottom: "-" a separator, "(text)" a disabled item.
  [[nodiscard]] std::vector<std::string> lines() const { return linesOf(menu); }
  [[nodiscard]] static std::vector<std::string> linesOf(const Menu& menu) {
    std::vector<std::string> all;
    for (const auto& item : menu)
      all.push_back(item.separator ? "-" : item.enabled() ? item.title : "(" + item.title + ")");
    return all;
  }
  /// The item with this title; null when there is none.
  [[nodiscard]] const MenuItem* find(const std::string& itemTitle) const {
    const auto item = std::ranges::find(menu, itemTitle, &MenuItem::title);
    return item == menu.end() ? nullptr : &*item;
  }

  StatusItemAppearance appearance;
  std::string title;
  std::size_t count = 0;  ///< the number beside the title
  Menu menu;
  int menusSet = 0;

 private:
  ViewsOnScreen& views_;
  std::weak_ptr<StatusItemTarget> target_;
};

/// Makes the views and shows a test the ones that exist now.
class FakeViews : public Views, public ViewsOnScreen {
 public:
  explicit FakeViews(Trace& worldTrace) : ViewsOnScreen{worldTrace} {}

  [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) override {
    return std::make_unique<FakeStatusItem>(*this, appearance, std::move(target));
  }
  [[nodiscard]] std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> owner) override {
    return std::make_unique<FakeQuickNotePanel>(*this, texts, std::move(owner));
  }
  [[nodiscard]] std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> owner) override {
    return std::make_unique<FakeSignInPanel>(*this, texts, std::move(owner));
  }
};

}  // namespace notewick
