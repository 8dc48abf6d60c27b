#include "detect/notification.h"

#include <utility>

#include "detect/quoted_text.h"
#include "model/bounded_text.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr TextBound TITLE_BOUND{200, 2 * KIB};
constexpr TextBound BODY_BOUND{2000, 16 * KIB};

}  // namespace

void notify(const std::string& title, const std::string& body, std::function<void()> clicked) {
  ports().notifier.show(boundedText(title, TITLE_BOUND), boundedText(body, BODY_BOUND),
                        std::move(clicked));
}

std::string notificationScript(const std::string& title, const std::string& body) {
  return "display notification " + quotedText(body) + " with title " + quotedText(title) +
         " sound name \"Glass\"";
}

Command notificationCommand(const std::string& title, const std::string& body) {
  return {"/usr/bin/osascript", {"-e", notificationScript(title, body)}};
}

}  // namespace notewick
