#pragma once

#include <string>
#include <vector>

#include "detect/work_session.h"
#include "model/records.h"

namespace notewick {

/// Puts an ended session into `pendings`: merged into the participant's pending of `day` where
/// there is one, else as a new one at the end, with an id from the registered UUID source. Main
/// thread.
void promote(const WorkSession& session, const std::string& day, std::vector<Pending>& pendings);

}  // namespace notewick
