#include "platform/linux/wayland/foreign_toplevels.h"

#include <wayland-client.h>

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "wlr-foreign-toplevel-management-unstable-v1-client-protocol.h"

namespace notewick {

/// A window with the description that the compositor has begun and not yet ended.
struct ForeignToplevels::Toplevel {
  Toplevel(ForeignToplevels& itsOwner, Handle* itsHandle) : owner(itsOwner), handle(itsHandle) {}
  ~Toplevel() { zwlr_foreign_toplevel_handle_v1_destroy(handle); }
  Toplevel(const Toplevel&) = delete;
  Toplevel& operator=(const Toplevel&) = delete;

  ForeignToplevels& owner;
  Handle* handle;
  ToplevelState next;
};

struct ForeignToplevels::Listeners {
  static void global(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                     std::uint32_t) {
    const auto& wanted = zwlr_foreign_toplevel_manager_v1_interface;
    auto& self = *static_cast<ForeignToplevels*>(data);
    if (self.manager_ != nullptr || std::string_view(interface) != wanted.name) return;
    self.manager_ = static_cast<Manager*>(wl_registry_bind(registry, name, &wanted, 1));
    zwlr_foreign_toplevel_manager_v1_add_listener(self.manager_, &OF_MANAGER, &self);
  }

  static void appeared(void* data, Manager*, Handle* handle) {
    static_cast<ForeignToplevels*>(data)->add(handle);
  }

  static void finished(void* data, Manager*) {
    static_cast<ForeignToplevels*>(data)->isFinished_ = true;
  }

  static void title(void* data, Handle*, const char* title) {
    static_cast<Toplevel*>(data)->next.title = title;
  }

  static void applicationId(void* data, Handle*, const char* id) {
    static_cast<Toplevel*>(data)->next.applicationId = id;
  }

  static void states(void* data, Handle*, wl_array* array) {
    const std::span states(static_cast<const std::uint32_t*>(array->data),
                           array->size / sizeof(std::uint32_t));
    const auto active = ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED;
    static_cast<Toplevel*>(data)->next.isActive =
        std::find(states.begin(), states.end(), active) != states.end();
  }

  static void done(void* data, Handle*) {
    const auto& toplevel = *static_cast<Toplevel*>(data);
    toplevel.owner.list_.set(toplevel.handle, toplevel.next);
  }

  static void closed(void* data, Handle*) {
    const auto& toplevel = *static_cast<Toplevel*>(data);
    toplevel.owner.remove(toplevel);
  }

  static constexpr auto IGNORE_GLOBAL = [](void*, wl_registry*, std::uint32_t) {};
  static constexpr auto IGNORE_OUTPUT = [](void*, Handle*, wl_output*) {};

  static constexpr wl_registry_listener OF_REGISTRY{global, IGNORE_GLOBAL};
  static constexpr zwlr_foreign_toplevel_manager_v1_listener OF_MANAGER{appeared, finished};
  static constexpr zwlr_foreign_toplevel_handle_v1_listener OF_HANDLE{
      title, applicationId, IGNORE_OUTPUT, IGNORE_OUTPUT, states, done, closed};
};

std::unique_ptr<ForeignToplevels> ForeignToplevels::open(const Deadline& deadline) {
  auto connection = WaylandConnection::open();
  if (!connection) return nullptr;
  std::unique_ptr<ForeignToplevels> toplevels(new ForeignToplevels(std::move(connection)));
  return toplevels->start(deadline) ? std::move(toplevels) : nullptr;
}

ForeignToplevels::ForeignToplevels(std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)),
      notifier_(wl_display_get_fd(connection_->display()), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                   [this] { static_cast<void>(update()); });
}

ForeignToplevels::~ForeignToplevels() {
  toplevels_.clear();
  if (manager_ != nullptr) zwlr_foreign_toplevel_manager_v1_destroy(manager_);
  if (registry_ != nullptr) wl_registry_destroy(registry_);
}

bool ForeignToplevels::start(const Deadline& deadline) {
  registry_ = wl_display_get_registry(connection_->display());
  wl_registry_add_listener(registry_, &Listeners::OF_REGISTRY, this);
  if (!connection_->roundTrip(deadline) || manager_ == nullptr) return false;
  return connection_->roundTrip(deadline);
}

bool ForeignToplevels::update() {
  if (!isFinished_ && !connection_->dispatch(Deadline(SAMPLE_LIMIT))) {
    isFinished_ = true;
  }
  if (isFinished_) notifier_.setEnabled(false);
  return !isFinished_;
}

void ForeignToplevels::add(Handle* handle) {
  auto& toplevel = *toplevels_.emplace_back(std::make_unique<Toplevel>(*this, handle));
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Listeners::OF_HANDLE, &toplevel);
}

void ForeignToplevels::remove(const Toplevel& toplevel) {
  list_.remove(toplevel.handle);
  std::erase_if(toplevels_, [&](const auto& each) { return each.get() == &toplevel; });
}

ToplevelScreen::ToplevelScreen(std::unique_ptr<ForeignToplevels> toplevels)
    : toplevels_(std::move(toplevels)) {}

std::optional<FrontmostApplication> ToplevelScreen::frontmostApplication(std::size_t mostWindows) {
  const bool isConnected = toplevels_ && toplevels_->update();
  if (!isConnected) toplevels_ = ForeignToplevels::open(Deadline(SAMPLE_LIMIT));
  if (!toplevels_) return std::nullopt;
  auto frontmost = toplevels_->list().frontmost(mostWindows);
  if (frontmost && frontmost->name) frontmost->name = names_.nameOf(*frontmost->name);
  return frontmost;
}

}  // namespace notewick
