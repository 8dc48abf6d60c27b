#pragma once

#include <string>

#include "client/answer_body.h"

namespace notewick {

/// What `readAnswer` has to find, read the plain way: the whole text becomes a tree, in which every
/// key is looked up.
[[nodiscard]] AnswerBody plainlyRead(const std::string& text);

}  // namespace notewick
