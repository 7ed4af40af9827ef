#pragma once

#include <string>

#include "console/doctor/doctor.h"
#include "support/notice.h"

namespace touch {

/// "problem", "note", "ok"
std::string_view stateName(FindingState state);

/// "2 problems, 1 note"; "Nothing is wrong; 1 note".
std::string summary(const Diagnosis& diagnosis);

/// The summary as a line for the user.
Notice noticeOf(const Diagnosis& diagnosis);

/// For people: each finding with why it matters and the next step below it, and the summary at the
/// end.
std::string findingsAsText(const Diagnosis& diagnosis);

/// For programs: an object with "problems", "notes" and the array "findings" of objects with
/// "state", "topic", "what", "why" and "next".
std::string findingsAsJson(const Diagnosis& diagnosis);

}  // namespace touch
