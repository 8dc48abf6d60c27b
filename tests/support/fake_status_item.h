#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/status_item.h"

namespace notewick {

class FakeViews;

/// The item in the status bar as the user sees it and works it.
class FakeStatusItem : public StatusItem {
 public:
  FakeStatusItem(FakeViews& views, StatusItemAppearance look,
                 std::weak_ptr<StatusItemTarget> target);
  FakeStatusItem(const FakeStatusItem&) = delete;
  FakeStatusItem& operator=(const FakeStatusItem&) = delete;
  ~FakeStatusItem() override;

  void setTitle(const std::string& text, std::size_t number) override;
  void setMenu(const Menu& newMenu) override;
  [[nodiscard]] bool isShown() const override;

  /// The user chooses the enabled item with this title; a test failure when there is none.
  void choose(const std::string& itemTitle);
  /// The user chooses an item, perhaps from a menu that has been replaced. Quitting does nothing.
  void choose(const MenuItem& item);
  void click();

  /// The menu's lines from top to bottom: "-" a separator, "(text)" a disabled item.
  [[nodiscard]] std::vector<std::string> lines() const;
  /// The item with this title; null when there is none.
  [[nodiscard]] const MenuItem* find(const std::string& itemTitle) const;

  StatusItemAppearance appearance;
  std::string title;
  std::size_t count = 0;  ///< the number beside the title
  Menu menu;
  int menusSet = 0;

 private:
  FakeViews& views_;
  std::weak_ptr<StatusItemTarget> target_;
};

}  // namespace notewick
