#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "reports/report_decoder.h"
#include "serial/debugger/console_line.h"
#include "serial/debugger/kept_lines.h"

namespace touch {

/// In words which of a packet's bytes the one at `place` is, and what it holds. `first` is the
/// packet's first byte.
std::string fieldText(const ReportDecoder& decoder, std::uint8_t first, std::size_t place,
                      std::size_t length);

/// In words what the byte at `place` of a console's line holds: its field and its report, where it
/// is of one, or its place in a message of the protocol.
std::string byteText(const ReportDecoder& decoder, const ConsoleLine& line, std::size_t place);
/// The same of a line that is kept with others: a packet or a message may go on in the lines beside
/// it.
std::string byteText(const ReportDecoder& decoder, const KeptLines& kept, std::uint64_t number,
                     std::size_t place);

}  // namespace touch
