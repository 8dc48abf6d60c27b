#include <algorithm>

#include "app/app_delegate.h"
#include "detect/quoted_text.h"
#include "detect/watch_log.h"
#include "detect/window_titles.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr std::size_t MOST_LOGGED_TITLES = 4;

std::string searchText(const FrontmostTitles& seen) {
  std::string text;
  for (const std::string& title : seen.titles) {
    if (!text.empty()) text += " | ";
    text += title;
  }
  return text + " " + seen.app;
}

void logSample(const FrontmostTitles& seen, const std::vector<std::string>& names) {
  std::vector<std::string> titles = seen.titles;
  titles.resize(std::min(titles.size(), MOST_LOGGED_TITLES));
  watchLog("app=" + seen.app + " titles=" + listNotation(titles) +
           " matches=" + listNotation(names));
}

/// Finds the title that shows a participant: the first that names them, or the first of all where
/// the name stands in no single title.
class TitleEvidence {
 public:
  TitleEvidence(const NameMatcher& matcher, const std::vector<std::string>& titles)
      : titles_(titles) {
    for (const std::string& title : titles) matches_.push_back(matcher.match(title));
  }

  [[nodiscard]] const std::string& of(std::size_t participant) const {
    const auto names = [&](const auto& matches) {
      return std::ranges::binary_search(matches, participant);
    };
    const auto naming = std::ranges::find_if(matches_, names);
    if (naming == matches_.end()) return titles_.front();
    return titles_[static_cast<std::size_t>(naming - matches_.begin())];
  }

 private:
  const std::vector<std::string>& titles_;
  std::vector<std::vector<std::size_t>> matches_;  ///< for each title, the participants it names
};

}  // namespace

void AppDelegate::tick() {
  if (paused) return;
  const Date now = beat_.momentOf(ports().clock.now());
  followTrust(ports().accessibility.isTrusted());
  if (!ports().accessibility.isTrusted()) {
    watchLog("ax=OFF (no screen access — grant Accessibility in System Settings)");
  } else if (!participants.empty()) {
    sample(now);
  }
  endSessions(now);
}

void AppDelegate::followTrust(bool trusted) {
  if (lastAxState == trusted) return;
  lastAxState = trusted;
  rebuildMenu();
  if (trusted) announce("VELK Notewick", "Screen access on — now watching for participant work.");
}

void AppDelegate::sample(Date now) {
  const auto seen = frontmostWindowTitles();
  if (!seen || seen->titles.empty()) return;
  const std::vector<std::size_t> matches = matcher_.match(searchText(*seen));
  std::vector<std::string> names;
  for (const std::size_t match : matches) names.push_back(participants[match].name());
  logSample(*seen, names);
  extendSessions(*seen, matches, now);
}

void AppDelegate::extendSessions(const FrontmostTitles& seen,
                                 const std::vector<std::size_t>& matches, Date now) {
  if (matches.empty()) return;
  const TitleEvidence evidence(matcher_, seen.titles);
  for (const std::size_t match : matches) {
    const std::string name = participants[match].name();
    const auto [entry, isNew] = sessions.try_emplace(name, name, now);
    if (!isNew) entry->second.addSighting(now);
    addEvidence(evidence.of(match), entry->second.evidence);
  }
}

void AppDelegate::endSessions(Date now) {
  std::vector<WorkSession> ended;
  for (auto entry = sessions.begin(); entry != sessions.end();) {
    if (entry->second.hasEnded(now)) {
      ended.push_back(std::move(entry->second));
      entry = sessions.erase(entry);
    } else {
      ++entry;
    }
  }
  for (const WorkSession& session : ended) {
    if (session.countsAsWork()) addPending(session);
  }
}

}  // namespace notewick
