#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/tray/menu_renderer.h"
#include "platform/status_item.h"

namespace notewick {

/// The item in the system's status bar. A click opens its menu, so `statusItemClicked` never comes.
class CocoaStatusItem final : public StatusItem {
 public:
  CocoaStatusItem(const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target);
  ~CocoaStatusItem() override;

  void setTitle(const std::string& title, std::size_t count) override;
  void setMenu(const Menu& menu) override;
  /// The status bar is always there.
  [[nodiscard]] bool isShown() const override { return true; }

  /// The native item, for tests.
  [[nodiscard]] NSStatusItem* native() const { return item_; }

 private:
  NSStatusItem* item_;
  NWMenuTarget* target_;
};

}  // namespace notewick
