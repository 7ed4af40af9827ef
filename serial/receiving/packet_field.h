#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "reports/report_decoder.h"

namespace touch {

/// In words which of a packet's bytes the one at `place` is, and what it holds. `first` is the
/// packet's first byte.
std::string fieldText(const ReportDecoder& decoder, std::uint8_t first, std::size_t place,
                      std::size_t length);

}  // namespace touch
