#pragma once

#include <string>
#include <vector>

#include "detect/work_session.h"
#include "model/records.h"

namespace notewick {

/// Turns an ended session into pending work: merges it into the participant's pending item of `day`
/// if there is one, and otherwise appends a new item whose id comes from the registered UUID
/// source. Gives the id of that item. Main thread.
std::string promote(const WorkSession& session, const std::string& day,
                    std::vector<Pending>& pendings);

}  // namespace notewick
