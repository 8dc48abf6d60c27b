#include "tests/support/fake_status_item.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/fake_views.h"

namespace notewick {

FakeStatusItem::FakeStatusItem(FakeViews& views, StatusItemAppearance look,
                               std::weak_ptr<StatusItemTarget> target)
    : appearance(std::move(look)),
      title(appearance.title),
      views_(views),
      target_(std::move(target)) {}

FakeStatusItem::~FakeStatusItem() {
  views_.forget(this);
}

void FakeStatusItem::setTitle(const std::string& text, std::size_t number) {
  title = text;
  count = number;
}

void FakeStatusItem::setMenu(const Menu& newMenu) {
  menu = newMenu;
  ++menusSet;
  views_.trace.push_back("menu");
}

bool FakeStatusItem::isShown() const {
  return views_.hasTray;
}

void FakeStatusItem::choose(const std::string& itemTitle) {
  const auto* const item = find(itemTitle);
  if (item && item->enabled())
    choose(MenuItem(*item));
  else
    ADD_FAILURE() << "no enabled menu item \"" << itemTitle << "\"";
}

void FakeStatusItem::choose(const MenuItem& item) {
  if (item.action == MenuAction::terminate) return;
  if (const auto target = target_.lock()) target->menuItemChosen(item);
}

void FakeStatusItem::click() {
  if (const auto target = target_.lock()) target->statusItemClicked();
}

std::vector<std::string> FakeStatusItem::lines() const {
  std::vector<std::string> all;
  for (const auto& item : menu)
    all.push_back(item.separator ? "-" : item.enabled() ? item.title : "(" + item.title + ")");
  return all;
}

const MenuItem* FakeStatusItem::find(const std::string& itemTitle) const {
  const auto item = std::ranges::find(menu, itemTitle, &MenuItem::title);
  return item == menu.end() ? nullptr : &*item;
}

}  // namespace notewick
