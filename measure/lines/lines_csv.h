#pragma once

#include <string>

#include "measure/judging/verdict.h"

namespace touch::measure {

/// One record for each line, with a heading: RFC 4180, points in numbers. The conditions stand in
/// each record.
std::string linesCsv(const Measurement& measurement, const Analysis& analysis,
                     const Verdict& verdict);

}  // namespace touch::measure
