#include <utility>

#include "app/app_delegate.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr const char* WIDGET_VISIBLE_KEY = "VELKWidgetVisible";
constexpr const char* NO_TRAY = "No tray here: right-click for the menu";

}  // namespace

bool AppDelegate::widgetVisible() const {
  return ports().userDefaults.boolean(WIDGET_VISIBLE_KEY).value_or(true);
}

void AppDelegate::setWidgetVisible(bool visible) {
  ports().userDefaults.setBoolean(WIDGET_VISIBLE_KEY, visible);
}

void AppDelegate::toggleWidget() {
  setWidgetVisible(!widgetVisible(), false);
}

void AppDelegate::setWidgetVisible(bool visible, bool fromPanel) {
  setWidgetVisible(visible);
  if (visible) {
    showWidget(std::nullopt);
  } else if (!fromPanel && widget) {
    widget->orderOut();
  }
  rebuildMenu();
}

void AppDelegate::showWidget(const std::optional<Pending>& pending) {
  if (!widget) widget = QuickWidgetController::create(weak_from_this());
  refreshWidget();
  widget->present(pending);
  if (!std::exchange(widgetShown_, true) && !statusItem->isShown()) widget->flashStatus(NO_TRAY);
  setWidgetVisible(true);
  rebuildMenu();
}

void AppDelegate::refreshWidget() {
  if (widget) widget->refresh(participants, pendings, outbox.size());
}

void AppDelegate::showChange() {
  rebuildMenu();
  refreshWidget();
}

void AppDelegate::widgetClosed() {
  setWidgetVisible(false);
  rebuildMenu();
}

}  // namespace notewick
