#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "client/velk_error.h"
#include "detect/name_matcher.h"
#include "detect/sample_beat.h"
#include "detect/work_session.h"
#include "model/records.h"
#include "outbox/delayed_save.h"
#include "platform/application.h"
#include "platform/main_loop.h"
#include "platform/status_item.h"
#include "ui/quick_widget_controller.h"

namespace notewick {

struct FrontmostTitles;
class LoginController;

/// Owner of all mutable state, for the whole process. Each group of operations is implemented in
/// the folder of the subsystem it belongs to. After every change of `pendings`, `outbox` or
/// `participants` the same steps follow, in this order: save that list's file, rebuild the menu,
/// refresh the widget. Main thread only.
class AppDelegate : public ApplicationDelegate,
                    public StatusItemTarget,
                    public QuickWidgetOwner,
                    public std::enable_shared_from_this<AppDelegate> {
 public:
  std::unique_ptr<StatusItem> statusItem;
  std::unique_ptr<Timer> timer;
  std::unique_ptr<Timer> outboxTimer;
  std::vector<Participant> participants;
  std::map<std::string, WorkSession> sessions;  ///< keyed by display name
  std::vector<Pending> pendings;
  std::vector<OutboxItem> outbox;
  std::set<std::string> sendingIds;  ///< outbox ids whose upload is in flight
  bool paused = false;
  std::optional<bool> lastAxState;  ///< trust at the last sample
  std::shared_ptr<QuickWidgetController> widget;

  // Launch: app/app_delegate.cpp
  void applicationDidFinishLaunching() override;
  void applicationReopened() override { logNow(); }
  void applicationWillTerminate() override { outboxSave_.finish(); }

  // Sampling and promotion: detect/
  void tick();
  void addPending(const WorkSession& session);
  void removePending(const std::string& id) override;

  // Outbox, participants, failures: outbox/
  void enqueueNote(const Participant& participant, const std::string& what, std::int64_t minutes,
                   const std::string& sessionDate) override;
  void flushOutbox();
  void retryOutbox();
  void refreshParticipants(bool silent);
  void handleApiFailure(const VELKError& error, const std::string& context);
  void menuSignOut();

  // Menu, widget, sign-in panel, commands: ui/
  void rebuildMenu();
  void menuItemChosen(const MenuItem& item) override;
  void statusItemClicked() override { logNow(); }
  void togglePause();
  void reloadParticipants();
  [[nodiscard]] bool widgetVisible() const;  ///< kept in the user defaults; true when absent
  void setWidgetVisible(bool visible);
  void toggleWidget();
  void setWidgetVisible(bool visible, bool fromPanel);
  void showWidget(const std::optional<Pending>& pending);
  void refreshWidget();
  void widgetClosed() override;
  void showLogin();
  void menuSignIn();
  void openPending(const MenuItem& sender);
  /// What a click on the notification of this pending item does: opens it, or does what "Log work
  /// now" does where it is gone.
  void openAnnounced(const std::string& pendingId);
  void logNow();
  void openCaseNotes();
  void openAccessibilitySettings();
  void installLoginItem();

 private:
  void loadRecords();
  void startTimers();
  void resumeSignIn();
  void askToSignIn();
  [[nodiscard]] std::shared_ptr<LoginController> loginController();
  void askToUnlock();
  void askToUnlockIfLocked();
  void followUnlocking();
  void unlockAnswered(bool opened);
  void followTrust(bool trusted);
  void sample(Date now);
  void extendSessions(const FrontmostTitles& seen, const std::vector<std::size_t>& matches,
                      Date now);
  void endSessions(Date now);
  void pendingsChanged();
  void saveOutbox();
  void showChange();  ///< rebuilds the menu and refreshes the widget
  /// Notifies the user. `clicked` is what a click on the notification does.
  void announce(const std::string& title, const std::string& body,
                std::function<void(AppDelegate&)> clicked = &AppDelegate::logNow);
  void setParticipants(std::vector<Participant> list);
  void startUpload(const OutboxItem& item);
  void uploadFinished(const OutboxItem& item, const Result<std::optional<std::string>>& result);
  void uploadFailed(const OutboxItem& item, const VELKError& error);
  void countAttempt(const std::string& id, const VELKError& error);
  void removeFromOutbox(const std::string& id);
  void participantsArrived(Result<std::vector<Participant>> result, bool silent);
  void signedIn();

  NameMatcher matcher_;  ///< built from `participants` whenever they change
  SampleBeat beat_;
  DelayedSave outboxSave_{[this] { saveOutbox(); }};
  bool widgetShown_ = false;    ///< the widget has been on screen since launch
  bool signInOffered_ = false;  ///< a sign-in panel has been shown since the user was signed in
  bool signInWaits_ = false;    ///< the user is asked for our token; without it a panel comes
};

}  // namespace notewick
