// Whatever a title, a name or a path holds, the programs that read what we write see exactly that
// text. The texts stand between zero bytes.
#include "detect/notification.h"
#include "detect/quoted_text.h"
#include "fuzz/readers.h"
#include "fuzz/targets.h"
#include "ui/start_at_login.h"

namespace notewick::fuzz {
namespace {

void readScript(const std::string& title, const std::string& body) {
  const std::string script = notificationScript(title, body);
  std::string_view rest = script;
  const auto take = [&](std::string_view words) {
    require(rest.starts_with(words), "the script has this form");
    rest.remove_prefix(words.size());
  };
  take("display notification ");
  require(takeLiteral(rest) == body, "AppleScript reads the body");
  take(" with title ");
  require(takeLiteral(rest) == title, "AppleScript reads the title");
  require(rest == " sound name \"Glass\"", "the script has this end");
}

}  // namespace

void quoting(std::string_view bytes) {
  const auto texts = parts(bytes, '\0');
  require(itemsOf(listNotation(texts)) == texts, "a list can be read back");
  readScript(texts.front(), texts.back());
  require(onlyArgument(autostartEntryText(texts.front())) == texts.front(),
          "a desktop starts the program by its path");
}

}  // namespace notewick::fuzz
