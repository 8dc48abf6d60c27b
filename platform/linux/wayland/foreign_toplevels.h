#pragma once

#include <QSocketNotifier>
#include <memory>
#include <vector>

#include "platform/linux/titles/application_names.h"
#include "platform/linux/wayland/toplevel_list.h"
#include "platform/linux/wayland/wayland_connection.h"
#include "platform/screen.h"

struct wl_registry;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace notewick {

/// The windows of all programs, as the compositor lists them through the wlroots protocol
/// wlr-foreign-toplevel-management; those of X programs too. Events are read as they arrive,
/// because a compositor drops a client that lets them pile up. Main thread.
class ForeignToplevels {
 public:
  /// Null when there is no compositor, it does not offer the protocol, or it did not answer in
  /// time.
  [[nodiscard]] static std::unique_ptr<ForeignToplevels> open(const Deadline& deadline);

  ~ForeignToplevels();
  ForeignToplevels(const ForeignToplevels&) = delete;
  ForeignToplevels& operator=(const ForeignToplevels&) = delete;

  /// Takes in what the compositor has sent, without waiting; false when it is gone for good.
  [[nodiscard]] bool update();

  [[nodiscard]] const ToplevelList& list() const { return list_; }

 private:
  using Manager = zwlr_foreign_toplevel_manager_v1;
  using Handle = zwlr_foreign_toplevel_handle_v1;
  struct Listeners;
  struct Toplevel;

  explicit ForeignToplevels(std::unique_ptr<WaylandConnection> connection);

  [[nodiscard]] bool start(const Deadline& deadline);
  void add(Handle* handle);
  void remove(const Toplevel& toplevel);

  std::unique_ptr<WaylandConnection> connection_;
  wl_registry* registry_ = nullptr;
  Manager* manager_ = nullptr;
  std::vector<std::unique_ptr<Toplevel>> toplevels_;
  ToplevelList list_;
  bool isFinished_ = false;
  QSocketNotifier notifier_;
};

/// What is on screen under a Wayland compositor that lists the windows of all programs. A
/// sample reads nothing but what has arrived already. When the compositor is gone nothing is
/// frontmost; each sample then tries once to find it again.
class ToplevelScreen final : public Screen {
 public:
  explicit ToplevelScreen(std::unique_ptr<ForeignToplevels> toplevels);

  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;

 private:
  std::unique_ptr<ForeignToplevels> toplevels_;
  ApplicationNames names_;
};

}  // namespace notewick
